#include <gtest/gtest.h>

#include "cli/base/PagePattern.h"

namespace quillpress::cli {
namespace {

std::string name(std::string_view pattern, std::uint64_t page) {
  const auto parsed = PagePattern::parse(pattern);
  return parsed ? parsed->nameOf(page) : "no pattern";
}

TEST(PagePatternTest, TheNumberTakesItsPlace) {
  EXPECT_EQ(name("page-%d.pdf", 12), "page-12.pdf");
  EXPECT_EQ(name("%dx", 1), "1x");
  EXPECT_EQ(name("100% of %d", 1), "100% of 1");
  EXPECT_EQ(name("%%d", 1), "%1");
}

TEST(PagePatternTest, NumbersAreFilledUpToTheirWidth) {
  EXPECT_EQ(name("page-%03d.pdf", 7), "page-007.pdf");
  EXPECT_EQ(name("page-%03d.pdf", 1234), "page-1234.pdf");
  EXPECT_EQ(name("page-%3d.pdf", 7), "page-  7.pdf");
}

TEST(PagePatternTest, OtherNamesAreNoPattern) {
  for (const char* const other :
       {"page.pdf", "100%.pdf", "%s.pdf", "%-3d", "%12d", "%00d", "%0", "%", "%d-%d.pdf", ""}) {
    EXPECT_FALSE(PagePattern::parse(other)) << other;
  }
}

}  // namespace
}  // namespace quillpress::cli
