#include "postscript/level3/images/ImageRows.h"
#include "postscript/level3/images/InterleavedMask.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

TEST(ImageRowsTest, RowsOfOneSourceComeAsTheyAre) {
  ImageRows rows({inPieces("abcdefX", 2)}, {.width = 1, .height = 2, .components = 3, .bits = 8});
  EXPECT_EQ(textOf(rows.next()), "abc");
  EXPECT_EQ(textOf(rows.next()), "def");
  EXPECT_TRUE(rows.next().empty());
  EXPECT_FALSE(rows.hasFailed());
}

TEST(ImageRowsTest, SourcesOfComponentsAreInterleaved) {
  ImageRows rows({inPieces("ad", 1), inPieces("be", 2), inPieces("cf", 1)},
                 {.width = 2, .height = 1, .components = 3, .bits = 8});
  EXPECT_EQ(textOf(rows.next()), "abcdef");
}

TEST(ImageRowsTest, ComponentsOfFewBitsAreInterleaved) {
  // 1 2 3 and 4 5 6, in four bits each.
  ImageRows rows({inPieces("\x12\x30", 1), inPieces("\x45\x60", 1)},
                 {.width = 3, .height = 1, .components = 2, .bits = 4});
  EXPECT_EQ(textOf(rows.next()), "\x14\x25\x36");
}

TEST(ImageRowsTest, AStringBeginsAgain) {
  ImageRows rows({std::make_shared<RepeatedString>(bytesOf("abc"))}, {.width = 7, .height = 1});
  EXPECT_EQ(textOf(rows.next()), "abcabca");
  EXPECT_EQ(textOf(rows.next()), "bcabcab");
}

TEST(InterleavedMaskTest, TakesSamplesOfMaskAndImageApart) {
  InterleavedMask split({.width = 3, .height = 1, .components = 3, .bits = 4});
  // Mask, then two components: 0 1 2, 15 3 4, 1 5 6.
  split.split(bytesOf(std::string_view("\x01\x2F\x34\x15\x60", 5)));
  EXPECT_EQ(textOf(split.image()), "\x12\x34\x56");
  EXPECT_EQ(textOf(split.mask()), "\x60");
  EXPECT_EQ(split.imageLayout().components, 2);
  EXPECT_EQ(split.maskLayout().bits, 1);
}

TEST(InterleavedMaskTest, RowsInterleaveWhenTheHeightsDivide) {
  RowInterleave found;
  EXPECT_TRUE(RowInterleave::find(6, 2, found));
  EXPECT_EQ(found.maskRows, 3);
  EXPECT_EQ(found.imageRows, 1);
  EXPECT_TRUE(RowInterleave::find(2, 6, found));
  EXPECT_EQ(found.maskRows, 1);
  EXPECT_EQ(found.imageRows, 3);
  EXPECT_FALSE(RowInterleave::find(4, 6, found));
}

}  // namespace
}  // namespace quillpress::level3
