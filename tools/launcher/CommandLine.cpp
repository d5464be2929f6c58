#include "tools/launcher/CommandLine.h"

#include <algorithm>
#include <cstddef>

namespace quillpress::launcher {
namespace {

bool isBlank(wchar_t character) {
  return character == L' ' || character == L'\t';
}

// Reads a command line from left to right.
class ArgumentReader {
 public:
  explicit ArgumentReader(std::wstring_view line) : line_(line) {}

  [[nodiscard]] bool atEnd() const { return position_ == line_.size(); }

  void skipBlanks() {
    while (!atEnd() && isBlank(line_[position_])) ++position_;
  }

  std::wstring program() {
    std::wstring text;
    bool quoted = false;
    for (; !atEnd() && (quoted || !isBlank(line_[position_])); ++position_) {
      if (line_[position_] == L'"') {
        quoted = !quoted;
      } else {
        text += line_[position_];
      }
    }
    return text;
  }

  std::wstring argument() {
    std::wstring text;
    bool quoted = false;
    while (!atEnd() && (quoted || !isBlank(line_[position_]))) {
      const std::size_t backslashes = takeBackslashes();
      if (!atQuote()) {
        text.append(backslashes, L'\\');
        if (backslashes == 0) text += line_[position_++];
        continue;
      }
      // Before a quote two backslashes stand for one; an odd one takes away the quote's meaning.
      text.append(backslashes / 2, L'\\');
      ++position_;
      if (backslashes % 2 != 0) {
        text += L'"';
      } else if (quoted && atQuote()) {
        text += L'"';
        ++position_;
      } else {
        quoted = !quoted;
      }
    }
    return text;
  }

 private:
  [[nodiscard]] bool atQuote() const { return !atEnd() && line_[position_] == L'"'; }

  std::size_t takeBackslashes() {
    const std::size_t start = position_;
    while (!atEnd() && line_[position_] == L'\\') ++position_;
    return position_ - start;
  }

  std::wstring_view line_;
  std::size_t position_ = 0;
};

bool needsQuotes(std::wstring_view argument) {
  return argument.empty() || std::any_of(argument.begin(), argument.end(), [](wchar_t character) {
           return character <= L' ' || character == L'"';
         });
}

std::wstring quotedArgument(std::wstring_view argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : argument) {
    if (character == L'"') text.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    text += character;
  }
  return text.append(backslashes, L'\\').append(L"\"");
}

}  // namespace

std::vector<std::wstring> splitCommandLine(std::wstring_view line) {
  std::vector<std::wstring> arguments;
  ArgumentReader reader(line);
  reader.skipBlanks();
  if (reader.atEnd()) return arguments;
  arguments.push_back(reader.program());
  for (reader.skipBlanks(); !reader.atEnd(); reader.skipBlanks()) arguments.push_back(reader.argument());
  return arguments;
}

std::wstring joinCommandLine(const std::vector<std::wstring>& arguments) {
  std::wstring line;
  for (const std::wstring& argument : arguments) {
    if (line.empty()) {
      line.append(L"\"").append(argument).append(L"\"");
    } else {
      line.append(L" ").append(needsQuotes(argument) ? quotedArgument(argument) : argument);
    }
  }
  return line;
}

}  // namespace quillpress::launcher
