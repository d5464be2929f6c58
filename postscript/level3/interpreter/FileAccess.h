#pragma once

#include <filesystem>
#include <vector>

namespace quillpress::level3 {

// Which files of the machine a job may read. None, unless the user has named folders; and it may write none.
class FileAccess {
 public:
  void allow(const std::filesystem::path& folder);

  // Whether the path, with all links followed, lies in one of the folders.
  [[nodiscard]] bool mayRead(const std::filesystem::path& path) const;

  // The files in the allowed folders, for filenameforall.
  [[nodiscard]] const std::vector<std::filesystem::path>& folders() const { return folders_; }

 private:
  std::vector<std::filesystem::path> folders_;
};

}  // namespace quillpress::level3
