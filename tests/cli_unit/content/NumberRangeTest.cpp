#include <gtest/gtest.h>

#include <string>

#include "cli/base/Errors.h"
#include "cli/content/NumberRange.h"

namespace quillpress::cli {
namespace {

TEST(NumberRangeTest, UsualContentPasses) {
  EXPECT_NO_THROW(checkNumbers(""));
  EXPECT_NO_THROW(checkNumbers("1 0 0 1 0 0 cm 12.5 -600 m 2147483647 9 l S\n"));
  EXPECT_NO_THROW(checkNumbers("999999999999999999 w"));
}

TEST(NumberRangeTest, FractionsMayBeLong) {
  EXPECT_NO_THROW(checkNumbers("0.1234567890123456789012345 w"));
}

TEST(NumberRangeTest, ALongNumberIsFoundWhereverItBegins) {
  for (std::size_t shift = 0; shift < 60; ++shift) {
    const std::string before(shift, ' ');
    EXPECT_THROW(checkNumbers(before + "1000000000000000000 w"), PageError) << shift;
    EXPECT_THROW(checkNumbers(before + "-1000000000000000000.5 w"), PageError) << shift;
    EXPECT_NO_THROW(checkNumbers(before + "100000000000000000 w")) << shift;
  }
}

TEST(NumberRangeTest, TheNumberIsNamed) {
  try {
    checkNumbers("1 w 10000000000000000000 w");
    ADD_FAILURE() << "passed";
  } catch (const PageError& error) {
    EXPECT_STREQ(error.what(), "the number 10000000000000000000 is beyond what PDF readers take");
  }
}

}  // namespace
}  // namespace quillpress::cli
