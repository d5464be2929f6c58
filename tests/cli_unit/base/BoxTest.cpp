#include <gtest/gtest.h>

#include "cli/base/Box.h"

namespace quillpress::cli {
namespace {

TEST(BoxTest, FourNumbersAreABox) {
  EXPECT_EQ(parseBox("0 0 595 842"), (Box{0, 0, 595, 842}));
  EXPECT_EQ(parseBox(" -10.5 20 +300 400.25 "), (Box{-10.5, 20, 300, 400.25}));
}

TEST(BoxTest, AnythingElseIsNone) {
  for (const std::string_view text : {"", "0 0 595", "0 0 595 842 1", "0 0 595 842pt", "(atend)",
                                      "0 0 width 842", "0 0 inf 842", "nan 0 9 9"}) {
    EXPECT_EQ(parseBox(text), std::nullopt) << text;
  }
}

TEST(BoxTest, ASideIsBetweenOneAnd14400Points) {
  EXPECT_TRUE((Box{0, 0, 1, 14400}).isPageSize());
  EXPECT_FALSE((Box{0, 0, 0.5, 10}).isPageSize());
  EXPECT_FALSE((Box{0, 0, 10, 14401}).isPageSize());
  EXPECT_FALSE((Box{10, 10, 0, 0}).isPageSize());
}

TEST(BoxTest, ACornerIsNotFarAway) {
  EXPECT_TRUE((Box{-100000, 100000, -99000, 101000}).isPageSize());
  EXPECT_FALSE((Box{100001, 0, 100100, 100}).isPageSize());
  EXPECT_FALSE((Box{0, -100001, 100, -99000}).isPageSize());
}

TEST(BoxTest, NumbersHaveAtMostThreeDecimalsAndNoNeedlessZeros) {
  EXPECT_EQ(pdfNumber(595), "595");
  EXPECT_EQ(pdfNumber(595.5), "595.5");
  EXPECT_EQ(pdfNumber(595.2756), "595.276");
  EXPECT_EQ(pdfNumber(-0.0001), "0");
  EXPECT_EQ(pdfNumber(1000), "1000");
  EXPECT_EQ(pdfNumber(-12.25), "-12.25");
}

}  // namespace
}  // namespace quillpress::cli
