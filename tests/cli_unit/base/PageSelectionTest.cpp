#include <gtest/gtest.h>

#include "cli/base/PageSelection.h"

namespace quillpress::cli {
namespace {

using Pages = std::vector<std::uint64_t>;

Pages select(std::string_view text, std::uint64_t count) {
  const auto selection = PageSelection::parse(text);
  EXPECT_TRUE(selection) << text;
  return selection ? selection->of(count) : Pages{};
}

TEST(PageSelectionTest, NothingSaidIsEveryPage) {
  EXPECT_TRUE(PageSelection().isEverything());
  EXPECT_EQ(PageSelection().of(3), (Pages{0, 1, 2}));
  EXPECT_FALSE(PageSelection().reachesBeyond(0));
}

TEST(PageSelectionTest, PagesAndRangesComeInTheirOrder) {
  EXPECT_EQ(select("2-5,9", 9), (Pages{1, 2, 3, 4, 8}));
  EXPECT_EQ(select("9,1,1", 9), (Pages{8, 0, 0}));
  EXPECT_EQ(select("4-2", 9), (Pages{3, 2, 1}));
}

TEST(PageSelectionTest, OpenRangesReachTheEnds) {
  EXPECT_EQ(select("-2", 4), (Pages{0, 1}));
  EXPECT_EQ(select("3-", 4), (Pages{2, 3}));
  EXPECT_EQ(select("5-", 4), Pages{});
}

TEST(PageSelectionTest, PagesBeyondTheLastAreLeftOut) {
  EXPECT_EQ(select("2-18446744073709551615", 3), (Pages{1, 2}));
  EXPECT_EQ(select("9-2", 3), (Pages{2, 1}));
  EXPECT_EQ(select("7", 3), Pages{});
  EXPECT_EQ(select("8-7", 3), Pages{});
}

TEST(PageSelectionTest, PagesBeyondTheLastAreNoticed) {
  EXPECT_TRUE(PageSelection::parse("1,4")->reachesBeyond(3));
  EXPECT_TRUE(PageSelection::parse("2-4")->reachesBeyond(3));
  EXPECT_TRUE(PageSelection::parse("4-")->reachesBeyond(3));
  EXPECT_FALSE(PageSelection::parse("3-,1-3")->reachesBeyond(3));
}

TEST(PageSelectionTest, OtherTextsAreNone) {
  for (const char* const text :
       {"", ",", "1,", "0", "0-3", "-", "1-2-3", "a", "1 ", "+1", "1.5", "99999999999999999999"}) {
    EXPECT_FALSE(PageSelection::parse(text)) << text;
  }
}

}  // namespace
}  // namespace quillpress::cli
