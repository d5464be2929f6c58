#include "cli/system/Paths.h"

#include <algorithm>

#include "cli/system/TemporaryName.h"
#include "cli/system/windows/Handle.h"
#include "cli/system/windows/WideText.h"

namespace quillpress::cli {

namespace {

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongSharePrefix = L"\\\\?\\UNC\\";

// Without what only long paths want.
std::wstring_view plain(std::wstring_view path) {
  if (path.starts_with(kLongSharePrefix)) return path.substr(kLongSharePrefix.size() - 1);
  return path.starts_with(kLongPrefix) ? path.substr(kLongPrefix.size()) : path;
}

class FileSearch {
 public:
  explicit FileSearch(const std::wstring& pattern) : search_(FindFirstFileW(pattern.c_str(), &found_)) {}
  FileSearch(const FileSearch&) = delete;
  FileSearch& operator=(const FileSearch&) = delete;
  ~FileSearch() {
    if (search_ != INVALID_HANDLE_VALUE) FindClose(search_);
  }

  [[nodiscard]] std::vector<std::string> files() {
    std::vector<std::string> names;
    bool isThere = search_ != INVALID_HANDLE_VALUE;
    for (; isThere; isThere = FindNextFileW(search_, &found_) != 0) {
      const bool isFolder = (found_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      if (!isFolder) names.push_back(utf8Text(found_.cFileName));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  WIN32_FIND_DATAW found_{};
  HANDLE search_;
};

}  // namespace

std::filesystem::path pathOf(const std::string& name) {
  return widePath(name);
}

std::string utf8Of(const std::filesystem::path& path) {
  return utf8Text(plain(path.native()));
}

std::string comparableName(const std::filesystem::path& path) {
  std::wstring name(plain(path.native()));
  std::replace(name.begin(), name.end(), L'/', L'\\');
  CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
  return utf8Text(name);
}

std::string whereLinksLead(const std::string& path) {
  constexpr DWORD kSharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle file(CreateFileW(widePath(path).c_str(), 0, kSharedByAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file) return path;
  std::wstring name(32 * 1024, L'\0');
  const DWORD size = GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), 0);
  if (size == 0 || size >= name.size()) return path;
  return utf8Text(plain(std::wstring_view(name).substr(0, size)));
}

std::vector<std::string> programArguments(int /*argc*/, const char* const* /*argv*/) {
  // Those of main() have been forced into the system's code page.
  int count = 0;
  wchar_t** const all = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  arguments.reserve(static_cast<std::size_t>(count));
  for (int place = 0; place < count; ++place) arguments.push_back(utf8Text(all[place]));
  LocalFree(all);
  return arguments;
}

std::vector<std::string> expanded(const std::string& argument) {
  const std::size_t folder = argument.find_last_of("/\\:") + 1;
  if (argument.find_first_of("*?", folder) == std::string::npos) return {argument};
  std::vector<std::string> names = FileSearch(widePath(argument)).files();
  if (names.empty()) return {argument};
  for (std::string& name : names) name.insert(0, argument, 0, folder);
  return names;
}

std::string temporaryFolder() {
  std::wstring folder(MAX_PATH + 1, L'\0');
  folder.resize(GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
  std::string name = utf8Text(folder);
  // Without the variables that name one it is the system's own folder, where not everybody may write.
  const bool isUsable = !name.empty() && openTemporary(name);
  return isUsable ? name : ".";
}

}  // namespace quillpress::cli
