#pragma once

#include "postscript/level3/images/ImageLayout.h"

namespace quillpress::level3 {

// Samples of a row one by one, the high bits first.
class SampleReader {
 public:
  SampleReader(Bytes row, int bits) : row_(row), bits_(static_cast<std::size_t>(bits)) {}

  // REQUIRES: the row has another sample
  unsigned next();

 private:
  Bytes row_;
  std::size_t bits_;
  std::size_t place_ = 0;  // in bits
};

class SampleWriter {
 public:
  // `row` is overwritten, the bits behind the last sample included.
  SampleWriter(std::span<Byte> row, int bits);

  // REQUIRES: the row has room; sample < 2 to the power of bits
  void put(unsigned sample);

 private:
  std::span<Byte> row_;
  std::size_t bits_;
  std::size_t place_ = 0;
};

// A sample of 12 bits in 16: 0 stays 0, the highest becomes the highest.
constexpr unsigned from12To16(unsigned sample) {
  return sample << 4 | sample >> 8;
}

// A row as PDF has it, from one of the same layout.
void convertRowForPdf(Bytes row, const ImageLayout& layout, std::span<Byte> target);

}  // namespace quillpress::level3
