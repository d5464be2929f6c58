#include <gtest/gtest.h>

#include "postscript/level3/images/IndexedRows.h"

namespace quillpress::level3 {
namespace {

std::string expanded(IndexedRows& rows, std::string_view row) {
  return std::string(textOf(rows.expand(bytesOf(row))));
}

TEST(IndexedRowsTest, SamplesBecomeColours) {
  IndexedRows rows({.width = 2, .height = 1, .components = 1, .bits = 8}, "rgbRGB", 3, 0, 255);
  EXPECT_EQ(rows.layout().components, 3);
  EXPECT_EQ(expanded(rows, std::string_view("\x01\x00", 2)), "RGBrgb");
}

TEST(IndexedRowsTest, TwelveBitsReachFurther) {
  std::string table(300, 'a');
  table += 'b';
  IndexedRows rows({.width = 2, .height = 1, .components = 1, .bits = 12}, table, 1, 0, 4095);
  EXPECT_EQ(expanded(rows, "\x12\xC0\x01"), "ba");
}

TEST(IndexedRowsTest, ColoursBeyondTheTableAreItsLast) {
  IndexedRows rows({.width = 1, .height = 1, .components = 1, .bits = 8}, "abc", 1, 0, 255);
  EXPECT_EQ(expanded(rows, "\xFF"), "c");
}

TEST(IndexedRowsTest, ADecodeArrayTurnsTheTableRound) {
  IndexedRows rows({.width = 4, .height = 1, .components = 1, .bits = 2}, "abcd", 1, 3, 0);
  EXPECT_EQ(expanded(rows, "\x1B"), "dcba");
}

}  // namespace
}  // namespace quillpress::level3
