#pragma once

#include "postscript/level3/streams/PredictorFilter.h"

namespace quillpress::level3 {

// What stands for rows that do not come.
inline constexpr Byte kMissingSample = 0xFF;

// Shape of an image's data: rows of whole bytes, from the top or wherever its matrix says, each of pixels of
// interleaved components. Samples have 1, 2, 4, 8 or 12 bits in the language, and 16 instead of 12 in PDF.
struct ImageLayout {
  int width = 1;
  int height = 1;
  int components = 1;
  int bits = 8;

  [[nodiscard]] std::size_t samplesInRow() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(components);
  }
  [[nodiscard]] std::size_t rowBytes() const {
    return (samplesInRow() * static_cast<std::size_t>(bits) + 7) / 8;
  }
  // One component of it alone.
  [[nodiscard]] ImageLayout plane() const { return {width, height, 1, bits}; }
  // As it goes into the file.
  [[nodiscard]] ImageLayout forPdf() const { return {width, height, components, bits == 12 ? 16 : bits}; }

  [[nodiscard]] PredictorParameters predictor(int number) const { return {number, components, bits, width}; }
};

}  // namespace quillpress::level3
