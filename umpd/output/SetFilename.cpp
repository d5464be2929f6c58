#include "umpd/output/SetFilename.h"

#include "umpd/output/FirstLine.h"
#include "umpd/output/OutputName.h"
#include "umpd/output/PathRules.h"
#include "umpd/output/RandomNumbers.h"
#include "umpd/win32/Windows.h"

namespace quillpress {
namespace {

constexpr std::size_t kTextSize = 520;
constexpr std::size_t kExtensionSize = 40;

// "@FILE": the name is the first line of a file, for programs that set it anew for each job.
std::wstring followReference(const std::wstring& name) {
  if (!name.starts_with(L'@')) return name;
  return readFirstLine(name.substr(1), kTextSize).value_or(name);
}

NamingRules rulesFrom(const DriverSettings& settings) {
  NamingRules rules;
  rules.action = settings.getInt(L"SaveFilenameAction", 0);
  rules.trimCharacter = static_cast<wchar_t>(settings.getInt(L"TrimNameChar", L'-'));
  rules.extension = settings.getString(L"DefaultExtension", kExtensionSize, L".pdf");
  rules.folder = settings.getString(L"DefaultSaveDir", kTextSize, L"");
  rules.defaultName = followReference(settings.getString(L"DefaultSaveFilename", kTextSize, L""));
  return rules;
}

bool exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void makeFolders(const std::wstring& path) {
  for (const std::wstring& folder : folderChain(folderOf(path))) CreateDirectoryW(folder.c_str(), nullptr);
}

}  // namespace

std::optional<std::wstring> SetFilename::chooseOutputFilename(const std::wstring& documentName,
                                                              std::size_t bufferSize) const {
  RandomNumbers numbers;
  const NamingWorld world{exists, [&] { return numbers.next(); }};
  const std::wstring path = chooseOutputPath(rulesFrom(*settings_), documentName, bufferSize, world);
  makeFolders(path);
  std::optional<std::wstring> unique = uniquePath(path, bufferSize, world);
  if (!unique) SetLastError(ERROR_FILE_EXISTS);
  return unique;
}

}  // namespace quillpress
