#pragma once

#include <string>

namespace quillpress::classes {

// A new folder, gone at the end with the files in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // Without a backslash at the end.
  [[nodiscard]] const std::wstring& path() const { return path_; }

  // The path of a file in it.
  [[nodiscard]] std::wstring file(const std::wstring& name) const { return path_ + L"\\" + name; }

 private:
  std::wstring path_;
};

bool fileExists(const std::wstring& path);

// All bytes of a file; the test fails when there is none.
std::string bytesOf(const std::wstring& path);

}  // namespace quillpress::classes
