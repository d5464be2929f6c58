#include <gtest/gtest.h>

#include "umpd/rules/XmpPacket.h"

namespace quillpress::driver {
namespace {

std::tm someTime() {
  std::tm time{};
  time.tm_year = 2009 - 1900;
  time.tm_mon = 1;
  time.tm_mday = 3;
  time.tm_hour = 4;
  time.tm_min = 5;
  time.tm_sec = 6;
  return time;
}

std::wstring offsetOf(long biasMinutes) {
  const std::wstring date = formatXmpDate(someTime(), biasMinutes);
  const std::wstring localTime = L"2009-02-03T04:05:06";
  EXPECT_TRUE(date.starts_with(localTime)) << date;
  return date.substr(std::min(localTime.size(), date.size()));
}

TEST(XmpDateTest, IsTheLocalTimeWithItsOffset) {
  EXPECT_EQ(formatXmpDate(someTime(), -60), L"2009-02-03T04:05:06+01:00");
  std::tm end = someTime();
  end.tm_year = 9999 - 1900;
  end.tm_mon = 11;
  end.tm_mday = 31;
  end.tm_hour = 23;
  end.tm_min = 59;
  end.tm_sec = 59;
  EXPECT_EQ(formatXmpDate(end, 0), L"9999-12-31T23:59:59Z");
}

TEST(XmpDateTest, NoBiasIsUtc) {
  EXPECT_EQ(offsetOf(0), L"Z");
}

TEST(XmpDateTest, WestOfUtcTheSignIsMinus) {
  EXPECT_EQ(offsetOf(300), L"-05:00");
  EXPECT_EQ(offsetOf(60), L"-01:00");
  EXPECT_EQ(offsetOf(210), L"-03:30");
}

TEST(XmpDateTest, EastOfUtcTheSignIsPlus) {
  EXPECT_EQ(offsetOf(-330), L"+05:30");
  EXPECT_EQ(offsetOf(-60), L"+01:00");
  EXPECT_EQ(offsetOf(-345), L"+05:45");
}

TEST(XmpDateTest, TheSignSurvivesAnHourOfZero) {
  EXPECT_EQ(offsetOf(30), L"-00:30");
  EXPECT_EQ(offsetOf(-30), L"+00:30");
  EXPECT_EQ(offsetOf(1), L"-00:01");
  EXPECT_EQ(offsetOf(-9), L"+00:09");
}

TEST(XmpDateTest, TwoDigitsAreWrittenAsTheyAre) {
  EXPECT_EQ(offsetOf(599), L"-09:59");
  EXPECT_EQ(offsetOf(600), L"-10:00");
  EXPECT_EQ(offsetOf(720), L"-12:00");
  EXPECT_EQ(offsetOf(-765), L"+12:45");
  EXPECT_EQ(offsetOf(-840), L"+14:00");
}

// Neither the C library of Linux nor that of Windows has room or words for it.
TEST(XmpDateTest, ATimeThatCannotBeWrittenGivesNoOffsetEither) {
  std::tm time{};
  time.tm_year = time.tm_mon = time.tm_mday = time.tm_hour = time.tm_min = time.tm_sec = 2'000'000'000;
  EXPECT_EQ(formatXmpDate(time, 300), L"");
  EXPECT_EQ(formatXmpDate(time, 0), L"");
}

}  // namespace
}  // namespace quillpress::driver
