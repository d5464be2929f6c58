#pragma once

#include <string>

#include "postscript/level3/pdf/Output.h"

namespace quillpress::level3 {

// A file that is kept in memory.
class MemoryOutput final : public Output {
 public:
  void write(std::string_view bytes) override { bytes_ += bytes; }
  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace quillpress::level3
