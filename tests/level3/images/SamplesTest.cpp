#include <gtest/gtest.h>

#include <array>

#include "postscript/level3/images/Samples.h"

namespace quillpress::level3 {
namespace {

TEST(SamplesTest, ComeBackAtEveryDepth) {
  for (const int bits : {1, 2, 4, 8, 12, 16}) {
    const unsigned highest = (1U << bits) - 1;
    std::array<Byte, 64> row{};
    SampleWriter writer(row, bits);
    for (unsigned i = 0; i < 30; ++i) writer.put(i * 1234577 & highest);
    SampleReader reader(row, bits);
    for (unsigned i = 0; i < 30; ++i) EXPECT_EQ(reader.next(), i * 1234577 & highest) << bits;
  }
}

TEST(SamplesTest, TheHighBitsComeFirst) {
  const std::array<Byte, 3> row = {0x12, 0x34, 0x56};
  SampleReader reader(row, 12);
  EXPECT_EQ(reader.next(), 0x123U);
  EXPECT_EQ(reader.next(), 0x456U);
}

TEST(SamplesTest, TwelveBitsBecomeSixteen) {
  const ImageLayout layout{.width = 2, .height = 1, .components = 1, .bits = 12};
  const std::array<Byte, 3> row = {0x00, 0x0F, 0xFF};
  std::array<Byte, 4> target{};
  convertRowForPdf(row, layout, target);
  EXPECT_EQ(target, (std::array<Byte, 4>{0x00, 0x00, 0xFF, 0xFF}));
  EXPECT_EQ(layout.forPdf().rowBytes(), target.size());
}

}  // namespace
}  // namespace quillpress::level3
