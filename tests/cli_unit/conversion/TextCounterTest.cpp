#include <gtest/gtest.h>

#include "cli/conversion/TextCounter.h"

namespace quillpress::cli {
namespace {

class TextCounterTest : public testing::Test {
 protected:
  TextCounterTest() { TextCounter::install(converter_); }

  std::optional<std::uint64_t> countAfter(std::string_view job) {
    EXPECT_TRUE(converter_.convert(job)) << converter_.errorText();
    return TextCounter::read(converter_);
  }

  Converter converter_;
};

TEST_F(TextCounterTest, AJobWithoutTextShowsNone) {
  EXPECT_EQ(countAfter("0 0 moveto 9 9 lineto stroke "), 0U);
}

TEST_F(TextCounterTest, EachOperatorThatShowsTextCounts) {
  EXPECT_EQ(countAfter("0 0 moveto (a) show (b) show 1 2 (c) ashow 1 2 32 (d) widthshow "), 4U);
}

TEST_F(TextCounterTest, ProceduresOfTheJobCountToo) {
  EXPECT_EQ(countAfter("/t {show} bind def /u /show load def (a) t (b) u (c) S "), 3U);
}

TEST_F(TextCounterTest, TheCountGoesOn) {
  EXPECT_EQ(countAfter("(a) show "), 1U);
  EXPECT_EQ(countAfter("(b) show "), 2U);
}

TEST_F(TextCounterTest, AJobThatHasLeftSomethingOpenDoesNotAnswer) {
  EXPECT_EQ(countAfter("(never ends"), std::nullopt);
}

TEST_F(TextCounterTest, AnOpenProcedureDoesNotAnswer) {
  EXPECT_EQ(countAfter("{ 1 2 add "), std::nullopt);
}

TEST_F(TextCounterTest, AnImageThatLacksDataDoesNotAnswer) {
  EXPECT_EQ(countAfter("100 100 8 [1 0 0 1 0 0] {currentfile 100 string readstring pop} image abc"),
            std::nullopt);
}

}  // namespace
}  // namespace quillpress::cli
