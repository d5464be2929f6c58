#include <gtest/gtest.h>

#include "cli/job/DscText.h"

namespace quillpress::cli {
namespace {

using std::string_literals::operator""s;

TEST(DscTextTest, PlainTextStays) {
  EXPECT_EQ(dscText("Quarterly report"), "Quarterly report");
  EXPECT_EQ(dscText(""), "");
}

TEST(DscTextTest, ParenthesesGoWithTheirEscapes) {
  EXPECT_EQ(dscText("(a report)"), "a report");
  EXPECT_EQ(dscText("(a \\(b\\) \\\\ \\141\\5622)"), "a (b) \\ ar2");
  EXPECT_EQ(dscText("(a\\nb\\tc)"), "a b c");
}

TEST(DscTextTest, AnOpenParenthesisIsText) {
  EXPECT_EQ(dscText("(draft) report"), "(draft) report");
  EXPECT_EQ(dscText("("), "(");
}

TEST(DscTextTest, HexadecimalTextIsDecoded) {
  EXPECT_EQ(dscText("<414243>"), "ABC");
  EXPECT_EQ(dscText("<4142x>"), "<4142x>");
  EXPECT_EQ(dscText("<414>"), "<414>");
}

TEST(DscTextTest, Utf16IsTold) {
  EXPECT_EQ(dscText("<FEFF00C4003120AC>"),
            "\xC3\x84"
            "1\xE2\x82\xAC");
  EXPECT_EQ(dscText("(\xFE\xFF\x00\x41)"s), "A");
}

TEST(DscTextTest, Utf8Stays) {
  EXPECT_EQ(dscText("\xC3\x84 \xE2\x82\xAC"), "\xC3\x84 \xE2\x82\xAC");
}

TEST(DscTextTest, OtherBytesAreThoseOfWindows) {
  EXPECT_EQ(dscText("\xC4 \x80"), "\xC3\x84 \xE2\x82\xAC");
}

}  // namespace
}  // namespace quillpress::cli
