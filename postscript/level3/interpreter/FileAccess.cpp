#include "postscript/level3/interpreter/FileAccess.h"

#include <algorithm>
#include <optional>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#endif

namespace quillpress::level3 {

namespace {

// Where a path really leads, links followed; none when it leads nowhere.
#ifdef _WIN32
// The standard library does not follow links here.
std::optional<std::filesystem::path> realPath(const std::filesystem::path& path) {
  const HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  // As long as a path can be.
  std::wstring name(32768, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file, name.data(), static_cast<DWORD>(name.size()), 0);
  CloseHandle(file);
  if (length == 0 || length >= name.size()) return std::nullopt;
  name.resize(length);
  return std::filesystem::path(std::move(name));
}
#else
std::optional<std::filesystem::path> realPath(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::path real = std::filesystem::canonical(path, error);
  if (error) return std::nullopt;
  return real;
}
#endif

}  // namespace

void FileAccess::allow(const std::filesystem::path& folder) {
  if (std::optional<std::filesystem::path> real = realPath(folder)) folders_.push_back(std::move(*real));
}

bool FileAccess::mayRead(const std::filesystem::path& path) const {
  const std::optional<std::filesystem::path> real = realPath(path);
  if (!real) return false;
  return std::any_of(folders_.begin(), folders_.end(), [&](const std::filesystem::path& folder) {
    const auto [end, rest] = std::mismatch(folder.begin(), folder.end(), real->begin(), real->end());
    return end == folder.end();
  });
}

}  // namespace quillpress::level3
