#include <gtest/gtest.h>

#include "cli/base/TextScan.h"

namespace quillpress::cli {
namespace {

TEST(TextScanTest, WhiteSpaceIsThatOfPostScript) {
  for (const char byte : {' ', '\t', '\n', '\r', '\f', '\0'}) EXPECT_TRUE(isWhite(byte));
  for (const char byte : {'a', '\v', '\x04', '\x1B'}) EXPECT_FALSE(isWhite(byte));
}

TEST(TextScanTest, TrimmedTakesWhiteSpaceOffBothEndsOnly) {
  EXPECT_EQ(trimmed(" \t a b \r\n"), "a b");
  EXPECT_EQ(trimmed("ab"), "ab");
  EXPECT_EQ(trimmed(" \n "), "");
  EXPECT_EQ(trimmed(""), "");
}

TEST(TextScanTest, WordsComeOneAfterTheOther) {
  std::string_view text = "  one\ttwo\n";
  EXPECT_EQ(takeWord(text), "one");
  EXPECT_EQ(takeWord(text), "two");
  EXPECT_EQ(takeWord(text), "");
}

TEST(TextScanTest, NumbersHaveSignsPointsAndExponents) {
  std::string_view text = "12 -0.5 +7 1e3 .25";
  for (const double expected : {12.0, -0.5, 7.0, 1000.0, 0.25}) EXPECT_EQ(takeNumber(text), expected);
  EXPECT_EQ(takeNumber(text), std::nullopt);
}

TEST(TextScanTest, TextStaysWhenItBeginsWithNoNumber) {
  for (const std::string_view start : {"twelve 1", "1a 2", "-", "1,5"}) {
    std::string_view text = start;
    EXPECT_EQ(takeNumber(text), std::nullopt) << start;
    EXPECT_EQ(text, start);
  }
}

TEST(TextScanTest, LoweredChangesAsciiOnly) {
  EXPECT_EQ(lowered("Letter-A4 \xC4"), "letter-a4 \xC4");
}

}  // namespace
}  // namespace quillpress::cli
