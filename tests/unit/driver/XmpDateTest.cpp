#include <gtest/gtest.h>

#include "umpd/rules/XmpPacket.h"

namespace quillpress::driver {
namespace {

// Neither the C library of Linux nor that of Windows has room or words for it.
TEST(XmpDateTest, ATimeThatCannotBeWrittenGivesNoOffsetEither) {
  std::tm time{};
  time.tm_year = time.tm_mon = time.tm_mday = time.tm_hour = time.tm_min = time.tm_sec = 2'000'000'000;
  EXPECT_EQ(formatXmpDate(time, 300), L"");
  EXPECT_EQ(formatXmpDate(time, 0), L"");
}

}  // namespace
}  // namespace quillpress::driver
