#pragma once

#include <string>
#include <string_view>

#include "umpd/win32/Resources.h"

namespace quillpress::launcher {

// Where lines go: a file that grows and that others may read meanwhile, or standard output.
class Log {
 public:
  // An empty path is standard output.
  explicit Log(const std::wstring& path);

  // False when the file cannot be written to.
  [[nodiscard]] bool isOpen() const { return !toFile_ || static_cast<bool>(file_); }

  // Writes the text and a line feed at once, so that lines of several writers stay whole. What cannot be
  // written is lost: a full disk must not stop the printing.
  void writeLine(std::wstring_view line);

 private:
  bool toFile_;
  driver::FileHandle file_;
  HANDLE standardOutput_ = nullptr;  // borrowed
};

}  // namespace quillpress::launcher
