#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "cli/conversion/Aside.h"

namespace quillpress::cli {
namespace {

using std::chrono::milliseconds;
using Answer = std::optional<std::uint64_t>;

constexpr milliseconds kLong{60000};

TEST(AsideTest, TheAnswerComesBack) {
  EXPECT_EQ(askAside(kLong, [] { return Answer(42); }), 42U);
  EXPECT_EQ(askAside(kLong, [] { return Answer(UINT64_MAX); }), UINT64_MAX);
}

TEST(AsideTest, NoAnswerIsNone) {
  EXPECT_EQ(askAside(kLong, [] { return Answer(); }), std::nullopt);
}

TEST(AsideTest, AQuestionWithoutAnEndIsGivenUp) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(askAside(milliseconds(200),
                     []() -> Answer {
                       while (true) pause();
                     }),
            std::nullopt);
  // The clock of a wait may be a little faster than the clock that is read here.
  EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(180));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(20000));
}

TEST(AsideTest, AQuestionThatFailsHasNoAnswer) {
  EXPECT_EQ(askAside(kLong, []() -> Answer { throw std::runtime_error("no"); }), std::nullopt);
  EXPECT_EQ(askAside(kLong, []() -> Answer { _exit(3); }), std::nullopt);
}

TEST(AsideTest, NothingChangesHere) {
  int value = 1;
  askAside(kLong, [&] {
    value = 2;
    return Answer(1);
  });
  EXPECT_EQ(value, 1);
}

TEST(AsideTest, TheCopyIsSilent) {
  setenv("QUILLPRESS_MESSAGES", "stderr", 1);
  EXPECT_EQ(askAside(kLong, [] { return Answer(getenv("QUILLPRESS_MESSAGES") == nullptr ? 1 : 0); }), 1U);
  EXPECT_STREQ(getenv("QUILLPRESS_MESSAGES"), "stderr");
  unsetenv("QUILLPRESS_MESSAGES");
}

}  // namespace
}  // namespace quillpress::cli
