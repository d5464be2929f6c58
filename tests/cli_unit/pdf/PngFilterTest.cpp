#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "cli/pdf/PngFilter.h"

namespace quillpress::cli {
namespace {

constexpr RowLayout kLayout{9, 3};
constexpr std::size_t kRows = 5;

std::string sampleImage() {
  std::string image;
  for (unsigned i = 0; i < kLayout.row * kRows; ++i) image += static_cast<char>(i * i * 7 + i);
  return image;
}

std::string filtered(const std::string& image, PngFilter filter, std::size_t first, std::size_t rows) {
  std::string target(filteredSize(kLayout, rows), '\0');
  filterRows(image, kLayout, filter, first, rows, target.data());
  return target;
}

int paeth(int left, int above, int corner) {
  const int estimate = left + above - corner;
  const int a = std::abs(estimate - left);
  const int b = std::abs(estimate - above);
  const int c = std::abs(estimate - corner);
  if (a <= b && a <= c) return left;
  return b <= c ? above : corner;
}

// Undoes the filters as the PNG standard says.
std::string unfiltered(const std::string& rows) {
  std::string image;
  for (std::size_t y = 0; y * (kLayout.row + 1) < rows.size(); ++y) {
    const char* const row = rows.data() + y * (kLayout.row + 1);
    for (std::size_t x = 0; x < kLayout.row; ++x) {
      const auto at = [&](std::size_t place) {
        return static_cast<int>(static_cast<unsigned char>(image[place]));
      };
      const std::size_t place = y * kLayout.row + x;
      const int left = x < kLayout.pixel ? 0 : at(place - kLayout.pixel);
      const int above = y == 0 ? 0 : at(place - kLayout.row);
      const int corner = y == 0 || x < kLayout.pixel ? 0 : at(place - kLayout.row - kLayout.pixel);
      const int predictions[] = {0, left, above, (left + above) / 2, paeth(left, above, corner)};
      image += static_cast<char>(row[1 + x] + predictions[static_cast<unsigned char>(row[0])]);
    }
  }
  return image;
}

TEST(PngFilterTest, EachFilterCanBeUndone) {
  for (const PngFilter filter :
       {PngFilter::kNone, PngFilter::kSub, PngFilter::kUp, PngFilter::kAverage, PngFilter::kPaeth}) {
    const std::string rows = filtered(sampleImage(), filter, 0, kRows);
    EXPECT_EQ(static_cast<PngFilter>(rows[0]), filter);
    EXPECT_EQ(unfiltered(rows), sampleImage()) << static_cast<int>(filter);
  }
}

TEST(PngFilterTest, ARowInTheMiddleLooksAtTheRowAboveIt) {
  for (const PngFilter filter : {PngFilter::kSub, PngFilter::kUp, PngFilter::kAverage, PngFilter::kPaeth}) {
    const std::string all = filtered(sampleImage(), filter, 0, kRows);
    const std::size_t rowSize = filteredSize(kLayout, 1);
    EXPECT_EQ(filtered(sampleImage(), filter, 2, 2), all.substr(2 * rowSize, 2 * rowSize));
  }
}

TEST(PngFilterTest, EqualRowsBecomeZeros) {
  const std::string image(kLayout.row * kRows, 'x');
  const std::string rows = filtered(image, PngFilter::kUp, 1, 1);
  EXPECT_EQ(rows, "\x02" + std::string(kLayout.row, '\0'));
}

}  // namespace
}  // namespace quillpress::cli
