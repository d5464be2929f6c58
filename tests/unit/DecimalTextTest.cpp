#include <gtest/gtest.h>

#include <limits>

#include "umpd/rules/SettingText.h"

namespace quillpress::driver {
namespace {

TEST(DecimalTextTest, LeadingDigitsCount) {
  EXPECT_EQ(toInteger(L"0"), 0);
  EXPECT_EQ(toInteger(L"300"), 300);
  EXPECT_EQ(toInteger(L"0300"), 300);
  EXPECT_EQ(toInteger(L"30a7"), 30);
  EXPECT_EQ(toInteger(L"1.9"), 1);
  EXPECT_EQ(toInteger(L"7 8"), 7);
}

TEST(DecimalTextTest, WithoutDigitsItIsZero) {
  for (const wchar_t* text : {L"", L"-", L"a1", L"--1", L"-a", L"x"}) EXPECT_EQ(toInteger(text), 0) << text;
}

TEST(DecimalTextTest, AMinusSignMayStandInFront) {
  EXPECT_EQ(toInteger(L"-1"), -1);
  EXPECT_EQ(toInteger(L"-0300x"), -300);
}

TEST(DecimalTextTest, OnlyTheTenAsciiDigitsAreDigits) {
  EXPECT_EQ(toInteger(L"/"), 0);
  EXPECT_EQ(toInteger(L":"), 0);
  EXPECT_EQ(toInteger(L"\x0661"), 0);
  EXPECT_EQ(toInteger(L"1\xFF12"), 1);
}

TEST(DecimalTextTest, BeyondThirtyTwoBitsItIsTheNearestInteger) {
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  EXPECT_EQ(toInteger(L"2147483646"), kMost - 1);
  EXPECT_EQ(toInteger(L"2147483647"), kMost);
  EXPECT_EQ(toInteger(L"2147483648"), kMost);
  EXPECT_EQ(toInteger(L"4294967297"), kMost);
  EXPECT_EQ(toInteger(L"99999999999999999999999999999999"), kMost);
  EXPECT_EQ(toInteger(L"-2147483647"), kLeast + 1);
  EXPECT_EQ(toInteger(L"-2147483648"), kLeast);
  EXPECT_EQ(toInteger(L"-2147483649"), kLeast);
  EXPECT_EQ(toInteger(L"-99999999999999999999999999999999"), kLeast);
}

TEST(DecimalTextTest, ANumberIsDigitsOnly) {
  for (const wchar_t* text : {L"0", L"300", L"0300", L"1234567890", L"99999999999999999999"})
    EXPECT_TRUE(isDecimalNumber(text)) << text;
  for (const wchar_t* text : {L"", L"-1", L"+1", L"30a", L"a30", L" 3", L"3 ", L"1.5", L"/", L":", L"\x0661"})
    EXPECT_FALSE(isDecimalNumber(text)) << text;
}

}  // namespace
}  // namespace quillpress::driver
