#include "umpd/output/SetFilename.h"

#include <random>

#include "umpd/rules/OutputPath.h"
#include "umpd/rules/Text.h"
#include "umpd/win32/Resources.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
// The fields that the settings are read into, final zero included; a longer setting counts as absent.
constexpr std::size_t kTextSize = 520;
constexpr std::size_t kExtensionSize = 40;

// Jobs of one thread may follow each other within one tick.
unsigned nextCount() {
  static LONG count = 0;
  return static_cast<unsigned>(InterlockedIncrement(&count));
}

// Non-negative numbers that differ between threads and moments. They hide nothing, they only tell files
// apart. The host's own generator is left alone.
class RandomNumbers {
 public:
  int next() { return numbers_(engine_); }

 private:
  std::minstd_rand engine_{GetCurrentThreadId() * GetTickCount() + nextCount()};
  std::uniform_int_distribution<int> numbers_;
};

// "@FILE": the name is the first line of a file, for programs that set it anew for each job.
std::wstring followReference(const std::wstring& name) {
  if (!name.starts_with(L'@')) return name;
  return readFirstLine(name.substr(1), kTextSize).value_or(name);
}

NamingRules rulesFrom(const DriverSettings& settings) {
  NamingRules rules;
  // The defaults hold for printers whose key was made by hand; a key made here has all but the extension.
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

bool isFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void makeFolders(const std::wstring& path) {
  // Outermost first, since each call makes one folder. Those that exist, drives and server names fail, which
  // is as good; what really is missing shows when the file is created.
  for (const std::wstring& folder : folderChain(folderOf(path))) CreateDirectoryW(folder.c_str(), nullptr);
}
}  // namespace

std::optional<std::wstring> SetFilename::chooseOutputFilename(const std::wstring& documentName,
                                                              std::size_t bufferSize) const {
  RandomNumbers numbers;
  const NamingWorld world{exists, isFolder, [&] { return numbers.next(); }};
  const NamingRules rules = rulesFrom(*settings_);
  const std::wstring path = chooseOutputPath(rules, documentName, bufferSize, world);
  // Before the path is made unique, which changes the name and never the folder.
  makeFolders(path);
  std::optional<std::wstring> unique = uniquePath(rules, path, bufferSize, world);
  // The box of the caller explains the last error, and no call to the system has failed here.
  if (!unique) SetLastError(ERROR_FILE_EXISTS);
  return unique;
}

std::optional<std::wstring> readFirstLine(const std::wstring& path, std::size_t bufferSize) {
  // The program that sets the name anew may have the file open for writing just now.
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return std::nullopt;
  std::string text(bufferSize - 1, '\0');
  DWORD size = 0;
  if (ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &size, nullptr) == 0) size = 0;
  text.resize(size);
  return fromAnsi(firstLine(text));
}
}  // namespace quillpress::driver
