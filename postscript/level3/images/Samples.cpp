#include "postscript/level3/images/Samples.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

unsigned SampleReader::next() {
  unsigned sample = 0;
  std::size_t left = bits_;
  while (left > 0) {
    const std::size_t inByte = 8 - place_ % 8;
    const std::size_t count = std::min(left, inByte);
    const unsigned byte = row_[place_ / 8];
    sample = sample << count | ((byte >> (inByte - count)) & ((1U << count) - 1));
    place_ += count;
    left -= count;
  }
  return sample;
}

SampleWriter::SampleWriter(std::span<Byte> row, int bits) : row_(row), bits_(static_cast<std::size_t>(bits)) {
  std::fill(row_.begin(), row_.end(), Byte{0});
}

void SampleWriter::put(unsigned sample) {
  std::size_t left = bits_;
  while (left > 0) {
    const std::size_t inByte = 8 - place_ % 8;
    const std::size_t count = std::min(left, inByte);
    const unsigned part = sample >> (left - count) & ((1U << count) - 1);
    row_[place_ / 8] = static_cast<Byte>(row_[place_ / 8] | part << (inByte - count));
    place_ += count;
    left -= count;
  }
}

void convertRowForPdf(Bytes row, const ImageLayout& layout, std::span<Byte> target) {
  if (layout.bits != 12) {
    std::memcpy(target.data(), row.data(), layout.rowBytes());
    return;
  }
  SampleReader reader(row, layout.bits);
  SampleWriter writer(target, layout.forPdf().bits);
  for (std::size_t i = 0; i < layout.samplesInRow(); ++i) writer.put(from12To16(reader.next()));
}

}  // namespace quillpress::level3
