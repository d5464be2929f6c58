#include "postscript/level3/streams/PngRow.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace quillpress::level3 {

namespace {

// Calls visit(index, difference) for each byte of the row. The first pixel, which has no left neighbour, is a
// loop of its own, so that the other one can be vectorised.
template <typename Predict, typename Visit>
void forEachDifference(Bytes row, Bytes prior, std::size_t pixel, Predict predict, Visit visit) {
  const std::size_t head = std::min(pixel, row.size());
  for (std::size_t i = 0; i < head; ++i) {
    visit(i, static_cast<Byte>(row[i] - predict(0, prior[i], 0)));
  }
  for (std::size_t i = head; i < row.size(); ++i) {
    visit(i, static_cast<Byte>(row[i] - predict(row[i - pixel], prior[i], prior[i - pixel])));
  }
}

template <typename Visit>
void forEachDifference(PngFilter filter, Bytes row, Bytes prior, std::size_t pixel, Visit visit) {
  switch (filter) {
    case PngFilter::kNone:
      return forEachDifference(
          row, prior, pixel, [](int, int, int) { return 0; }, visit);
    case PngFilter::kSub:
      return forEachDifference(
          row, prior, pixel, [](int left, int, int) { return left; }, visit);
    case PngFilter::kUp:
      return forEachDifference(
          row, prior, pixel, [](int, int up, int) { return up; }, visit);
    case PngFilter::kAverage:
      return forEachDifference(
          row, prior, pixel, [](int left, int up, int) { return (left + up) / 2; }, visit);
    case PngFilter::kPaeth:
      return forEachDifference(row, prior, pixel, paeth, visit);
  }
}

std::uint64_t sumOfDifferences(PngFilter filter, Bytes row, Bytes prior, std::size_t pixel) {
  std::uint64_t sum = 0;
  forEachDifference(filter, row, prior, pixel, [&sum](std::size_t, Byte difference) {
    sum += difference < 128 ? difference : 256U - difference;
  });
  return sum;
}

// By comparison with itself, one byte further on.
bool isAllZero(Bytes row) {
  return row.empty() || (row[0] == 0 && std::equal(row.begin() + 1, row.end(), row.begin()));
}

}  // namespace

void filterPngRow(PngFilter filter, Bytes row, Bytes prior, std::size_t pixel, Byte* target) {
  forEachDifference(filter, row, prior, pixel,
                    [target](std::size_t i, Byte difference) { target[i] = difference; });
}

PngFilter bestPngFilter(Bytes row, Bytes prior, std::size_t pixel) {
  // Much of most pages is one colour.
  if (std::equal(row.begin(), row.end(), prior.begin()))
    return isAllZero(row) ? PngFilter::kNone : PngFilter::kUp;
  PngFilter best = PngFilter::kNone;
  std::uint64_t bestSum = sumOfDifferences(best, row, prior, pixel);
  for (int number = 1; number < kPngFilterCount; ++number) {
    const auto filter = static_cast<PngFilter>(number);
    const std::uint64_t sum = sumOfDifferences(filter, row, prior, pixel);
    if (sum < bestSum) {
      bestSum = sum;
      best = filter;
    }
  }
  return best;
}

}  // namespace quillpress::level3
