#pragma once

#include <string>
#include <vector>

namespace quillpress::harness {

// A new folder, gone at the end with the files in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // Without a backslash at the end.
  [[nodiscard]] const std::wstring& path() const { return path_; }
  [[nodiscard]] std::wstring file(const std::wstring& name) const { return path_ + L"\\" + name; }

  // The names of the files in it, in order.
  [[nodiscard]] std::vector<std::wstring> files() const;

 private:
  std::wstring path_;
};

// All bytes of a file; the test fails when it cannot be read.
std::string readFile(const std::wstring& path);
void writeFile(const std::wstring& path, const std::string& bytes);
bool fileExists(const std::wstring& path);

}  // namespace quillpress::harness
