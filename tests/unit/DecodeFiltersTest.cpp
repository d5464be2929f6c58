#include <gtest/gtest.h>

#include "postscript/lib/objects/DecodeFilters.h"

namespace quillpress {
namespace {

TEST(DecodeFiltersTest, HexSkipsWhiteSpaceAndIgnoresTheRest) {
  EXPECT_EQ(decodeHex("48 65\n6C\t6c\r6F\f>"), "Hello");
  EXPECT_EQ(decodeHex("4x8-6(5"), "He");
  EXPECT_EQ(decodeHex(""), "");
  EXPECT_EQ(decodeHex(">"), "");
}

TEST(DecodeFiltersTest, AnOddHexDigitCountsAsFollowedByZero) {
  EXPECT_EQ(decodeHex("4>"), "@");
  EXPECT_EQ(decodeHex("48f"), "H\xf0");
}

TEST(DecodeFiltersTest, HexGivesEveryByte) {
  std::string text;
  std::string bytes;
  for (int i = 0; i < 256; ++i) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text += kDigits[static_cast<std::size_t>(i) / 16];
    text += kDigits[static_cast<std::size_t>(i) % 16];
    bytes += static_cast<char>(i);
  }
  EXPECT_EQ(decodeHex(text), bytes);
}

TEST(DecodeFiltersTest, Ascii85GivesFourBytesForFiveDigits) {
  EXPECT_EQ(decodeAscii85("87cURD]i,\"Ebo80~>"), "Hello World!");
  EXPECT_EQ(decodeAscii85("s8W-!~>"), "\xff\xff\xff\xff");
  EXPECT_EQ(decodeAscii85("!!!!!~>"), std::string(4, '\0'));
}

TEST(DecodeFiltersTest, Ascii85KnowsTheShortFormOfZeros) {
  EXPECT_EQ(decodeAscii85("z~>"), std::string(4, '\0'));
  EXPECT_EQ(decodeAscii85("zz5l~>"), std::string(8, '\0') + "A");
}

TEST(DecodeFiltersTest, AShortLastAscii85GroupHoldsOneByteLess) {
  EXPECT_EQ(decodeAscii85("87~>"), "H");
  EXPECT_EQ(decodeAscii85("87_~>").size(), 2U);
  EXPECT_EQ(decodeAscii85("87cR~>").size(), 3U);
  EXPECT_EQ(decodeAscii85("8~>"), "");
}

TEST(DecodeFiltersTest, Ascii85EndsAtTheTilde) {
  EXPECT_EQ(decodeAscii85("87~cURDZ"), "H");
  EXPECT_EQ(decodeAscii85("87cURDZ"), "Hello");
  EXPECT_EQ(decodeAscii85("87 cU\nRD\tZ ~>"), "Hello");
}

TEST(DecodeFiltersTest, AFilterIsFoundByName) {
  EXPECT_EQ(decodeWith("ASCIIHexDecode", "4869>"), "Hi");
  EXPECT_EQ(decodeWith("ASCII85Decode", "87~>"), "H");
  EXPECT_EQ(decodeWith("OtherDecode", "4869>"), "4869>");
}

}  // namespace
}  // namespace quillpress
