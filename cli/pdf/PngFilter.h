#pragma once

#include <cstddef>
#include <string_view>

namespace quillpress::cli {

// How bytes of an image are predicted from their neighbours, so that only small differences remain to be
// compressed. The numbers are PNG's, which PDF's predictor 15 writes before each row.
enum class PngFilter : unsigned char { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };

// Row and pixel length of an image, in bytes.
struct RowLayout {
  std::size_t row;
  std::size_t pixel;
};

// The length of `rows` filtered rows: each has a byte for its filter.
constexpr std::size_t filteredSize(const RowLayout& layout, std::size_t rows) {
  return (layout.row + 1) * rows;
}

// Writes rows `first` to `first + rows` of `image`, filtered, to `target`, which has room for filteredSize
// bytes. `filter` is not None.
void filterRows(std::string_view image, const RowLayout& layout, PngFilter filter, std::size_t first,
                std::size_t rows, char* target);

}  // namespace quillpress::cli
