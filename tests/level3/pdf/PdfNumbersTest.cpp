#include <gtest/gtest.h>

#include <limits>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {
namespace {

std::string number(double value, int decimals) {
  std::string text;
  appendNumber(text, value, decimals);
  return text;
}

TEST(PdfNumbersTest, WholeNumbersHaveNoPoint) {
  EXPECT_EQ(number(12, 3), "12");
  EXPECT_EQ(number(-7, 3), "-7");
  EXPECT_EQ(number(100, 0), "100");
}

TEST(PdfNumbersTest, NoZeroStandsBeforeThePointOrAtTheEnd) {
  EXPECT_EQ(number(0.5, 3), ".5");
  EXPECT_EQ(number(-0.25, 3), "-.25");
  EXPECT_EQ(number(1.50, 3), "1.5");
  EXPECT_EQ(number(0.005, 3), ".005");
}

TEST(PdfNumbersTest, ZeroHasNoSign) {
  EXPECT_EQ(number(-0.0, 3), "0");
  EXPECT_EQ(number(-0.0001, 3), "0");
}

TEST(PdfNumbersTest, ZerosWithinANumberStay) {
  EXPECT_EQ(number(1000, 3), "1000");
  EXPECT_EQ(number(10.01, 2), "10.01");
  EXPECT_EQ(number(100.5, 4), "100.5");
  EXPECT_EQ(number(0.000000001, 9), ".000000001");
}

TEST(PdfNumbersTest, IntegersHaveAllTheirDigits) {
  std::string text;
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::int64_t>::min()}) {
    appendInteger(text, value);
    text += ' ';
  }
  EXPECT_EQ(text, "0 -1 9223372036854775807 -9223372036854775808 ");
}

TEST(PdfNumbersTest, RoundsToTheNearest) {
  EXPECT_EQ(number(0.9996, 3), "1");
  EXPECT_EQ(number(2.0 / 3, 4), ".6667");
}

TEST(PdfNumbersTest, WhatIsNoNumberIsZero) {
  EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN(), 2), "0");
}

TEST(PdfNumbersTest, InfinityIsTheGreatestNumber) {
  EXPECT_EQ(number(std::numeric_limits<double>::infinity(), 9), "2000000000");
  EXPECT_EQ(number(-1e300, 2), "-2000000000");
}

}  // namespace
}  // namespace quillpress::level3
