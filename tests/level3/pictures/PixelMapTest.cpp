#include <gtest/gtest.h>

#include "tests/level3/pictures/PixelMap.h"

namespace quillpress::level3 {
namespace {

PixelMap page(std::size_t width, std::size_t height, unsigned char sample) {
  return {width, height, std::vector<unsigned char>(width * height * 3, sample)};
}

TEST(PixelMapTest, EqualPagesDoNotDiffer) {
  EXPECT_EQ(meanDifference(page(4, 5, 7), page(4, 5, 7)), 0);
}

TEST(PixelMapTest, BlackAndWhiteDifferByAll) {
  EXPECT_DOUBLE_EQ(meanDifference(page(4, 5, 0), page(4, 5, 255)), 1);
}

TEST(PixelMapTest, OnePixelWeighsTheSameAfterTheBlur) {
  PixelMap spotted = page(10, 10, 0);
  for (std::size_t channel = 0; channel < 3; ++channel) spotted.samples[(5 * 10 + 5) * 3 + channel] = 255;
  EXPECT_NEAR(meanDifference(spotted, page(10, 10, 0)), 0.01, 1e-9);
}

// Two neighbours that change places share most of their blurred surroundings.
TEST(PixelMapTest, AShiftByOnePixelIsForgivenInPart) {
  PixelMap one = page(10, 10, 0);
  PixelMap other = one;
  one.samples[(5 * 10 + 5) * 3] = 255;
  other.samples[(5 * 10 + 6) * 3] = 255;
  EXPECT_NEAR(meanDifference(one, other), 2.0 / 3 / 300, 1e-9);
}

}  // namespace
}  // namespace quillpress::level3
