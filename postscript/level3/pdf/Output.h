#pragma once

#include <string_view>

namespace quillpress::level3 {

// Where a PDF file's bytes go, in order. A write that fails throws, and the file is given up.
class Output {
 public:
  virtual ~Output() = default;
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  virtual void write(std::string_view bytes) = 0;
};

}  // namespace quillpress::level3
