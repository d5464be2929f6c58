#include "postscript/level3/interpreter/FileAccess.h"

#include <algorithm>
#include <system_error>

namespace quillpress::level3 {

void FileAccess::allow(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::path real = std::filesystem::canonical(folder, error);
  if (!error) folders_.push_back(std::move(real));
}

bool FileAccess::mayRead(const std::filesystem::path& path) const {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(path, error);
  if (error) return false;
  return std::any_of(folders_.begin(), folders_.end(), [&](const std::filesystem::path& folder) {
    const auto [end, rest] = std::mismatch(folder.begin(), folder.end(), real.begin(), real.end());
    return end == folder.end();
  });
}

}  // namespace quillpress::level3
