#include "tools/launcher/CommandTemplate.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cwctype>

#include "tools/launcher/CommandLine.h"

namespace quillpress::launcher {
namespace {

constexpr std::wstring_view kPlaceholder = L"%s";

// Windows starts these in a command interpreter, which reads the names by rules of its own.
bool isBatchFile(std::wstring_view program) {
  // The system ignores what trails an extension.
  const std::size_t last = program.find_last_not_of(L". ");
  if (last == std::wstring_view::npos || last < 3) return false;
  std::wstring extension(program.substr(last - 3, 4));
  std::transform(extension.begin(), extension.end(), extension.begin(), [](wchar_t character) {
    return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character)));
  });
  return extension == L".bat" || extension == L".cmd";
}

// Puts the values in for the placeholders from left to right, counting in `next` through all arguments.
template <std::size_t kCount>
std::wstring filledIn(std::wstring_view argument, const std::array<std::wstring_view, kCount>& values,
                      std::size_t& next) {
  std::wstring text;
  while (next < kCount) {
    const std::size_t place = argument.find(kPlaceholder);
    if (place == std::wstring_view::npos) break;
    text.append(argument.substr(0, place)).append(values[next++]);
    argument.remove_prefix(place + kPlaceholder.size());
  }
  return text.append(argument);
}

}  // namespace

std::optional<CommandTemplate> CommandTemplate::parse(std::wstring_view text, std::wstring& complaint) {
  std::vector<std::wstring> arguments = splitCommandLine(text);
  if (arguments.empty() || arguments.front().empty()) {
    complaint = L"the command names no program";
  } else if (arguments.front().find(kPlaceholder) != std::wstring::npos) {
    complaint = L"the program of the command cannot be a placeholder";
  } else if (isBatchFile(arguments.front())) {
    complaint = L"the command cannot be a batch file: names would be read as commands";
  } else {
    return CommandTemplate(std::move(arguments));
  }
  return std::nullopt;
}

std::wstring CommandTemplate::commandLine(std::wstring_view outputPath,
                                          std::wstring_view documentName) const {
  const std::array values{outputPath, documentName};
  std::size_t next = 0;
  std::vector<std::wstring> arguments;
  arguments.reserve(arguments_.size());
  for (const std::wstring& argument : arguments_) arguments.push_back(filledIn(argument, values, next));
  return joinCommandLine(arguments);
}

}  // namespace quillpress::launcher
