#include <gtest/gtest.h>

#include <cstdlib>

#include "postscript/level3/document/JobDate.h"

namespace quillpress::level3 {
namespace {

std::string read(std::string_view comment) {
  return pdfDateOf(comment).value_or("none");
}

TEST(JobDateTest, DatesInWordsAreRead) {
  EXPECT_EQ(read("Thu Jan  5 10:11:12 1998"), "D:19980105101112");
  EXPECT_EQ(read("Mon Jan 5 10:11:12 MET 1998"), "D:19980105101112");
  EXPECT_EQ(read("Thu, 5 Jan 1998 10:11:12 +0130"), "D:19980105101112+01'30'");
  EXPECT_EQ(read("5 January 1998"), "D:19980105");
  EXPECT_EQ(read("October 31, 2004 9:05 PM"), "D:20041031210500");
  EXPECT_EQ(read("5-DEC-1998 10:11:12 GMT"), "D:19981205101112Z");
}

TEST(JobDateTest, DatesInNumbersAreRead) {
  EXPECT_EQ(read("1998-01-05T10:11:12+01:00"), "D:19980105101112+01'00'");
  EXPECT_EQ(read("1998-01-05 10:11:12.5Z"), "D:19980105101112Z");
  EXPECT_EQ(read("2004/12/31"), "D:20041231");
  EXPECT_EQ(read("1/25/1998 12:11 AM"), "D:19980125001100");
  EXPECT_EQ(read("25.1.1998 10:11"), "D:19980125101100");
  EXPECT_EQ(read("8/8/2004 20:30:31"), "D:20040808203031");
}

TEST(JobDateTest, PackedDatesAreRead) {
  EXPECT_EQ(read("D:19980105101112Z"), "D:19980105101112Z");
  EXPECT_EQ(read("D:19980105101112-05'00'"), "D:19980105101112-05'00'");
  EXPECT_EQ(read("19980105"), "D:19980105");
  EXPECT_EQ(read("19980105T1011"), "D:19980105101100");
}

TEST(JobDateTest, WhatLeavesADoubtIsNoDate) {
  for (const char* const text : {"", "today", "8/12/2004 20:30:31", "1998", "Jan 1998", "5 Jan 98", "31-04-1",
                                 "32 Jan 1998", "5 Jan 1998 25:00", "13:00 PM 5 Jan 1998", "1998-13-01",
                                 "D:99999999", "Jan 5 6 1998", "5 Jan 1998 1:2:3:4", "123456 Jan 5 1998"}) {
    EXPECT_EQ(read(text), "none") << text;
  }
}

#ifdef _WIN32
void setVariable(const std::string& value) {
  _putenv(("SOURCE_DATE_EPOCH=" + value).c_str());
}
void removeVariable() {
  setVariable("");
}
#else
void setVariable(const std::string& value) {
  setenv("SOURCE_DATE_EPOCH", value.c_str(), 1);
}
void removeVariable() {
  unsetenv("SOURCE_DATE_EPOCH");
}
#endif

TEST(JobDateTest, TheEnvironmentCanGiveADate) {
  setVariable("86400");
  EXPECT_EQ(pdfDateOfEnvironment(), "D:19700102000000Z");
  // Behind the end of a time_t of 32 bits.
  setVariable("4107542399");
  EXPECT_EQ(pdfDateOfEnvironment(), "D:21000228235959Z");
  // A year that a PDF file's date has no room for.
  for (const char* const text : {"", "x", "1x", "253402300800", "99999999999999999999"}) {
    setVariable(text);
    EXPECT_EQ(pdfDateOfEnvironment(), std::nullopt) << text;
  }
  removeVariable();
  EXPECT_EQ(pdfDateOfEnvironment(), std::nullopt);
}

}  // namespace
}  // namespace quillpress::level3
