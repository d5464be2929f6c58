#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "cli/conversion/Aside.h"

namespace quillpress::cli {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLong{60000};

TEST(AsideTest, TheAnswerComesBack) {
  EXPECT_TRUE(askAside(kLong, [] { return true; }));
  EXPECT_FALSE(askAside(kLong, [] { return false; }));
}

TEST(AsideTest, AQuestionWithoutAnEndIsGivenUp) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(askAside(milliseconds(200), []() -> bool {
    while (true) pause();
  }));
  // The clock of a wait may be a little faster than the clock that is read here.
  EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(180));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(20000));
}

TEST(AsideTest, AQuestionThatFailsHasNoAnswer) {
  EXPECT_FALSE(askAside(kLong, []() -> bool { throw std::runtime_error("no"); }));
  EXPECT_FALSE(askAside(kLong, []() -> bool { _exit(3); }));
}

TEST(AsideTest, NothingChangesHere) {
  int value = 1;
  askAside(kLong, [&] {
    value = 2;
    return true;
  });
  EXPECT_EQ(value, 1);
}

TEST(AsideTest, TheCopyIsSilent) {
  setenv("QUILLPRESS_MESSAGES", "stderr", 1);
  EXPECT_TRUE(askAside(kLong, [] { return getenv("QUILLPRESS_MESSAGES") == nullptr; }));
  EXPECT_STREQ(getenv("QUILLPRESS_MESSAGES"), "stderr");
  unsetenv("QUILLPRESS_MESSAGES");
}

}  // namespace
}  // namespace quillpress::cli
