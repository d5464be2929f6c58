#include <gtest/gtest.h>

#include "umpd/rules/Text.h"

namespace quillpress::driver {
namespace {

TEST(FirstLineTest, EndsAtTheLineFeed) {
  EXPECT_EQ(firstLine("Report.pdf\nmore\n"), "Report.pdf");
  EXPECT_EQ(firstLine("Report.pdf\r\nmore\r\n"), "Report.pdf");
  EXPECT_EQ(firstLine("Report.pdf"), "Report.pdf");
}

TEST(FirstLineTest, LosesBlanksAtItsEnd) {
  EXPECT_EQ(firstLine("Report.pdf \t \r\nmore"), "Report.pdf");
  EXPECT_EQ(firstLine("Report.pdf\t"), "Report.pdf");
  EXPECT_EQ(firstLine("a\r\r\n"), "a");
}

TEST(FirstLineTest, KeepsBlanksElsewhere) {
  EXPECT_EQ(firstLine(" \tMy report.pdf\n"), " \tMy report.pdf");
}

TEST(FirstLineTest, MayBeEmpty) {
  EXPECT_EQ(firstLine(""), "");
  EXPECT_EQ(firstLine("\nReport.pdf"), "");
  EXPECT_EQ(firstLine(" \t\r\nReport.pdf"), "");
}

TEST(FirstLineTest, EndsAtAZero) {
  EXPECT_EQ(firstLine(std::string_view("Report\0.pdf\n", 12)), "Report");
  EXPECT_EQ(firstLine(std::string_view("Report \0.pdf\n", 13)), "Report");
}

TEST(FirstLineTest, KeepsBytesAbove127) {
  EXPECT_EQ(firstLine("\xC4\xA0\n"), "\xC4\xA0");
}

}  // namespace
}  // namespace quillpress::driver
