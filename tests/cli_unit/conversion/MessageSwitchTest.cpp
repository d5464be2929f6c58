#include <gtest/gtest.h>

#include <cstdlib>

#include "cli/conversion/Converter.h"
#include "cli/conversion/MessageSwitch.h"

namespace quillpress::cli {
namespace {

std::string shown() {
  testing::internal::CaptureStderr();
  Converter().convert("(hello) = ");
  return testing::internal::GetCapturedStderr();
}

TEST(MessageSwitchTest, MessagesAreShownAsLongAsItLives) {
  EXPECT_EQ(shown(), "");
  {
    const MessageSwitch on(MessageSwitch::Target::kStandardError);
    EXPECT_EQ(shown(), "hello\n");
    {
      const MessageSwitch off(MessageSwitch::Target::kNowhere);
      EXPECT_EQ(shown(), "");
    }
    EXPECT_EQ(shown(), "hello\n");
  }
  EXPECT_EQ(shown(), "");
}

TEST(MessageSwitchTest, WhatTheUserHasSetComesBack) {
  setenv("QUILLPRESS_MESSAGES", "elsewhere", 1);
  { const MessageSwitch on(MessageSwitch::Target::kStandardError); }
  EXPECT_STREQ(getenv("QUILLPRESS_MESSAGES"), "elsewhere");
  unsetenv("QUILLPRESS_MESSAGES");
}

}  // namespace
}  // namespace quillpress::cli
