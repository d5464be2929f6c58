#include <gtest/gtest.h>

#include "cli/base/ByteCount.h"

namespace quillpress::cli {
namespace {

TEST(ByteCountTest, ANumberCountsBytes) {
  EXPECT_EQ(parseByteCount("1"), 1U);
  EXPECT_EQ(parseByteCount("65536"), 65536U);
}

TEST(ByteCountTest, LettersMultiplyInAnyCase) {
  EXPECT_EQ(parseByteCount("64K"), 65536U);
  EXPECT_EQ(parseByteCount("64kib"), 65536U);
  EXPECT_EQ(parseByteCount("2m"), 2U * 1024 * 1024);
  EXPECT_EQ(parseByteCount("2MiB"), 2U * 1024 * 1024);
}

TEST(ByteCountTest, OneGibibyteIsTheMost) {
  EXPECT_EQ(parseByteCount("1024M"), std::size_t{1} << 30U);
  EXPECT_EQ(parseByteCount("1025M"), std::nullopt);
  EXPECT_EQ(parseByteCount("1073741825"), std::nullopt);
  EXPECT_EQ(parseByteCount("99999999999999999999999"), std::nullopt);
}

TEST(ByteCountTest, AnythingElseIsNoCount) {
  for (const std::string_view text : {"", "0", "0K", "-1", "1.5K", "K", "10G", "10 K", "ten"}) {
    EXPECT_EQ(parseByteCount(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace quillpress::cli
