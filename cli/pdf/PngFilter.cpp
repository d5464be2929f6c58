#include "cli/pdf/PngFilter.h"

#include <cstdlib>
#include <vector>

namespace quillpress::cli {

namespace {

using Byte = unsigned char;

// The neighbour nearest to left + above - corner.
Byte paeth(int left, int above, int corner) {
  const int toLeft = std::abs(above - corner);
  const int toAbove = std::abs(left - corner);
  const int toCorner = std::abs(left + above - 2 * corner);
  if (toLeft <= toAbove && toLeft <= toCorner) return static_cast<Byte>(left);
  return static_cast<Byte>(toAbove <= toCorner ? above : corner);
}

// The bytes around one byte of a row: those of the pixel before it, the row above, and both.
struct Neighbours {
  Byte left;
  Byte above;
  Byte corner;
};

template <typename Predict>
void filterRow(const Byte* row, const Byte* above, const RowLayout& layout, Predict predict, Byte* target) {
  // The first pixel has nothing to its left. Apart from the others, so that their loop has no condition.
  for (std::size_t i = 0; i < layout.pixel; ++i) {
    target[i] = static_cast<Byte>(row[i] - predict(Neighbours{0, above[i], 0}));
  }
  for (std::size_t i = layout.pixel; i < layout.row; ++i) {
    const Neighbours around{row[i - layout.pixel], above[i], above[i - layout.pixel]};
    target[i] = static_cast<Byte>(row[i] - predict(around));
  }
}

template <typename Predict>
void filterAll(std::string_view image, const RowLayout& layout, std::size_t first, std::size_t rows,
               PngFilter filter, Predict predict, Byte* target) {
  // Above the first row PNG sees zeros.
  const std::vector<Byte> nothing(layout.row);
  for (std::size_t number = first; number < first + rows; ++number) {
    const auto* const row = reinterpret_cast<const Byte*>(image.data()) + number * layout.row;
    *target++ = static_cast<Byte>(filter);
    filterRow(row, number == 0 ? nothing.data() : row - layout.row, layout, predict, target);
    target += layout.row;
  }
}

}  // namespace

void filterRows(std::string_view image, const RowLayout& layout, PngFilter filter, std::size_t first,
                std::size_t rows, char* target) {
  const auto run = [&](auto predict) {
    filterAll(image, layout, first, rows, filter, predict, reinterpret_cast<Byte*>(target));
  };
  switch (filter) {
    case PngFilter::kNone:
      return run([](const Neighbours&) { return Byte{0}; });
    case PngFilter::kSub:
      return run([](const Neighbours& around) { return around.left; });
    case PngFilter::kUp:
      return run([](const Neighbours& around) { return around.above; });
    case PngFilter::kAverage:
      return run(
          [](const Neighbours& around) { return static_cast<Byte>((around.left + around.above) / 2); });
    case PngFilter::kPaeth:
      return run([](const Neighbours& around) { return paeth(around.left, around.above, around.corner); });
  }
}

}  // namespace quillpress::cli
