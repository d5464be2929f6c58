#include <gtest/gtest.h>

#include <vector>

#include "umpd/rules/Account.h"

namespace quillpress::driver {
namespace {

using Authority = std::array<std::uint8_t, 6>;

std::optional<std::wstring> textOf(const Authority& authority,
                                   const std::vector<std::uint32_t>& subAuthorities) {
  const SecurityIdentifier sid{authority, subAuthorities};
  return sidText(sid, sidTextSize(sid));
}

TEST(SidTextTest, TheNtAuthorityIsDecimal) {
  EXPECT_EQ(textOf({0, 0, 0, 0, 0, 5}, {21, 1, 2, 1000}), L"S-1-5-21-1-2-1000");
  EXPECT_EQ(textOf({0, 0, 0, 0, 0, 5}, {18}), L"S-1-5-18");
}

TEST(SidTextTest, WithoutSubAuthoritiesNothingFollows) {
  EXPECT_EQ(textOf({0, 0, 0, 0, 0, 0}, {}), L"S-1-0");
}

TEST(SidTextTest, TheLastFourBytesAreOneNumber) {
  EXPECT_EQ(textOf({0, 0, 1, 2, 3, 4}, {}), L"S-1-16909060");
  EXPECT_EQ(textOf({0, 0, 0, 0, 1, 0}, {}), L"S-1-256");
  EXPECT_EQ(textOf({0, 0, 255, 255, 255, 255}, {}), L"S-1-4294967295");
  EXPECT_EQ(textOf({0, 0, 128, 0, 0, 0}, {}), L"S-1-2147483648");
}

TEST(SidTextTest, AGreaterAuthorityIsHexadecimal) {
  EXPECT_EQ(textOf({1, 0, 0, 0, 0, 5}, {32}), L"S-1-0x010000000005-32");
  EXPECT_EQ(textOf({0, 1, 0, 0, 0, 5}, {32}), L"S-1-0x000100000005-32");
  EXPECT_EQ(textOf({0xAB, 0xCD, 0xEF, 0x09, 0x80, 0xFF}, {}), L"S-1-0xabcdef0980ff");
}

TEST(SidTextTest, SubAuthoritiesAreUnsigned) {
  EXPECT_EQ(textOf({0, 0, 0, 0, 0, 5}, {4294967295U, 2147483648U, 0}), L"S-1-5-4294967295-2147483648-0");
}

TEST(SidTextTest, TheRequiredSizeGrowsWithTheSubAuthorities) {
  const std::vector<std::uint32_t> numbers(15, 4294967295U);
  for (std::size_t count = 0; count <= numbers.size(); ++count) {
    const SecurityIdentifier sid{{}, std::span(numbers).first(count)};
    EXPECT_EQ(sidTextSize(sid), 56 + 24 * count);
  }
}

TEST(SidTextTest, ASmallerSizeGivesNothing) {
  const std::vector<std::uint32_t> numbers = {21, 1};
  const SecurityIdentifier sid{{0, 0, 0, 0, 0, 5}, numbers};
  EXPECT_EQ(sidText(sid, 0), std::nullopt);
  EXPECT_EQ(sidText(sid, 103), std::nullopt);
  EXPECT_EQ(sidText(sid, 104), L"S-1-5-21-1");
  EXPECT_EQ(sidText(sid, 1000), L"S-1-5-21-1");
}

TEST(SidTextTest, TheLongestTextFits) {
  const std::vector<std::uint32_t> numbers(15, 4294967295U);
  const SecurityIdentifier sid{{255, 255, 255, 255, 255, 255}, numbers};
  const auto text = sidText(sid, sidTextSize(sid));
  ASSERT_TRUE(text);
  EXPECT_LT(text->size(), sidTextSize(sid));
  EXPECT_TRUE(text->starts_with(L"S-1-0xffffffffffff-4294967295-"));
}

}  // namespace
}  // namespace quillpress::driver
