#pragma once

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// How the bytes of a row are predicted from those around them. The numbers are PNG's, written before each
// row.
enum class PngFilter : Byte { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };
inline constexpr int kPngFilterCount = 5;

// The byte that PNG's Paeth filter predicts.
constexpr int paeth(int left, int up, int upLeft) {
  const int estimate = left + up - upLeft;
  const int toLeft = estimate > left ? estimate - left : left - estimate;
  const int toUp = estimate > up ? estimate - up : up - estimate;
  const int toUpLeft = estimate > upLeft ? estimate - upLeft : upLeft - estimate;
  if (toLeft <= toUp && toLeft <= toUpLeft) return left;
  return toUp <= toUpLeft ? up : upLeft;
}

// Writes `row`, less what `filter` predicts, to `target`. `prior` is the row above, as long as `row`; zeros
// above the first. `pixel` is the distance to the left neighbour in bytes, at least 1.
void filterPngRow(PngFilter filter, Bytes row, Bytes prior, std::size_t pixel, Byte* target);

// The filter that promises to compress a row best, by the sum of its differences.
PngFilter bestPngFilter(Bytes row, Bytes prior, std::size_t pixel);

}  // namespace quillpress::level3
