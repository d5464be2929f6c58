#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

#include "postscript/lib/pdf/NumberFormat.h"

namespace quillpress {
namespace {

std::string numberText(double value) {
  std::string text;
  appendNumber(text, value);
  return text;
}

// The rule of the formatter, spelled with the C library.
std::string expectedText(double value) {
  const double magnitude = std::fabs(value);
  const char* format = magnitude >= 10000  ? "%.0f"
                       : magnitude >= 1000 ? "%.1f"
                       : magnitude >= 100  ? "%.3f"
                       : magnitude >= 10   ? "%.3f"
                       : magnitude >= 1    ? "%.4f"
                                           : "%.5f";
  std::array<char, 400> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, value);
  std::string text(buffer.data());
  if (magnitude >= 10000) return text;
  while (text.size() > 1 && text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

TEST(NumberFormatTest, AppendsToTheText) {
  std::string text("a ");
  appendNumber(text, 2.5);
  EXPECT_EQ(text, "a 2.5");
}

TEST(NumberFormatTest, WholeNumbersHaveNoDecimals) {
  EXPECT_EQ(numberText(0), "0");
  EXPECT_EQ(numberText(1), "1");
  EXPECT_EQ(numberText(-1), "-1");
  EXPECT_EQ(numberText(10), "10");
  EXPECT_EQ(numberText(12), "12");
  EXPECT_EQ(numberText(100), "100");
  EXPECT_EQ(numberText(1000), "1000");
  EXPECT_EQ(numberText(9999), "9999");
  EXPECT_EQ(numberText(-100), "-100");
  EXPECT_EQ(numberText(10000), "10000");
  EXPECT_EQ(numberText(-120000), "-120000");
}

TEST(NumberFormatTest, BelowOneHasFiveDecimals) {
  EXPECT_EQ(numberText(0.5), "0.5");
  EXPECT_EQ(numberText(0.123456), "0.12346");
  EXPECT_EQ(numberText(-0.123454), "-0.12345");
  EXPECT_EQ(numberText(0.00001), "0.00001");
  EXPECT_EQ(numberText(0.999994), "0.99999");
}

TEST(NumberFormatTest, FromOneHasFourDecimals) {
  EXPECT_EQ(numberText(1.23456), "1.2346");
  EXPECT_EQ(numberText(-1.23456), "-1.2346");
  EXPECT_EQ(numberText(9.99994), "9.9999");
  EXPECT_EQ(numberText(1.00001), "1");
}

TEST(NumberFormatTest, FromTenHasThreeDecimals) {
  EXPECT_EQ(numberText(10.1236), "10.124");
  EXPECT_EQ(numberText(99.9994), "99.999");
  EXPECT_EQ(numberText(-55.5555), "-55.556");
}

TEST(NumberFormatTest, FromAHundredHasThreeDecimalsToo) {
  EXPECT_EQ(numberText(150.25), "150.25");
  EXPECT_EQ(numberText(100.1236), "100.124");
  EXPECT_EQ(numberText(999.9994), "999.999");
  EXPECT_EQ(numberText(-123.4567), "-123.457");
}

TEST(NumberFormatTest, FromAThousandHasOneDecimal) {
  EXPECT_EQ(numberText(1000.26), "1000.3");
  EXPECT_EQ(numberText(-1234.56), "-1234.6");
  EXPECT_EQ(numberText(9999.94), "9999.9");
}

TEST(NumberFormatTest, FromTenThousandHasNoDecimalsAndKeepsItsZeros) {
  EXPECT_EQ(numberText(12345.6), "12346");
  EXPECT_EQ(numberText(10000.4), "10000");
  EXPECT_EQ(numberText(-20000.2), "-20000");
  EXPECT_EQ(numberText(1e15), "1000000000000000");
  EXPECT_EQ(numberText(4294967296.0), "4294967296");
}

TEST(NumberFormatTest, TheBandGoesByTheValueBeforeRounding) {
  EXPECT_EQ(numberText(0.999999), "1");
  EXPECT_EQ(numberText(9.99996), "10");
  EXPECT_EQ(numberText(99.9996), "100");
  EXPECT_EQ(numberText(999.9996), "1000");
  EXPECT_EQ(numberText(9999.96), "10000");
  EXPECT_EQ(numberText(-9999.96), "-10000");
}

TEST(NumberFormatTest, BothSidesOfEveryLimitFollowTheRule) {
  for (const double limit : {1.0, 10.0, 100.0, 1000.0, 10000.0}) {
    for (const double value : {std::nextafter(limit, 0.0), limit, std::nextafter(limit, 1e6)}) {
      EXPECT_EQ(numberText(value), expectedText(value));
      EXPECT_EQ(numberText(-value), expectedText(-value));
    }
  }
}

TEST(NumberFormatTest, NothingIsLeftOfTinyNumbers) {
  EXPECT_EQ(numberText(0.000004), "0");
  EXPECT_EQ(numberText(-0.000004), "0");
  EXPECT_EQ(numberText(-0.0), "0");
  EXPECT_EQ(numberText(std::numeric_limits<double>::denorm_min()), "0");
  EXPECT_EQ(numberText(-0.000006), "-0.00001");
}

TEST(NumberFormatTest, WhatIsNoNumberIsWrittenAsZero) {
  EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(numberText(-std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "0");
}

TEST(NumberFormatTest, TheLargestDoubleIsWrittenInFull) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(numberText(largest), expectedText(largest));
  EXPECT_EQ(numberText(-largest), expectedText(-largest));
}

TEST(NumberFormatTest, AgreesWithTheCLibraryInEveryBand) {
  std::mt19937_64 random(20010917);
  std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
  std::uniform_int_distribution<int> exponent(-7, 5);
  for (int i = 0; i < 100000; ++i) {
    const double value = mantissa(random) * std::pow(10.0, exponent(random));
    ASSERT_EQ(numberText(value), expectedText(value)) << "number " << i;
  }
}

TEST(NumberFormatTest, AgreesWithTheCLibraryOnTies) {
  std::mt19937_64 random(4711);
  std::uniform_int_distribution<int> numerator(-700000, 700000);
  std::uniform_int_distribution<int> shift(0, 9);
  for (int i = 0; i < 50000; ++i) {
    const double value = std::ldexp(numerator(random), -shift(random));  // ends in 5: halves, quarters ...
    ASSERT_EQ(numberText(value), expectedText(value)) << "number " << i;
  }
}

TEST(NumberFormatTest, AgreesWithTheCLibraryOnAnyBits) {
  std::mt19937_64 random(99);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    ASSERT_EQ(numberText(value), expectedText(value)) << "bits " << bits;
  }
}

}  // namespace
}  // namespace quillpress
