#include <gtest/gtest.h>

#include "umpd/rules/Text.h"

namespace quillpress::driver {
namespace {

TEST(UmpdTextTest, CaseOfAToZDoesNotMatter) {
  EXPECT_TRUE(equalsIgnoringCase(L"", L""));
  EXPECT_TRUE(equalsIgnoringCase(L"Tarnwick Quillpress", L"TARNWICK quillpress"));
  EXPECT_TRUE(equalsIgnoringCase(L"AZaz", L"azAZ"));
  EXPECT_FALSE(equalsIgnoringCase(L"a", L""));
  EXPECT_FALSE(equalsIgnoringCase(L"a", L"ab"));
  EXPECT_FALSE(equalsIgnoringCase(L"ab", L"ac"));
}

TEST(UmpdTextTest, AnyOtherDifferenceMatters) {
  EXPECT_FALSE(equalsIgnoringCase(L"@", L"`"));
  EXPECT_FALSE(equalsIgnoringCase(L"[", L"{"));
  EXPECT_FALSE(equalsIgnoringCase(L"\x00C4", L"\x00E4"));
}

TEST(UmpdTextTest, EveryBackslashBecomesAComma) {
  EXPECT_EQ(backslashesToCommas(L"\\\\server\\queue"), L",,server,queue");
  EXPECT_EQ(backslashesToCommas(L"a/b,c"), L"a/b,c");
  EXPECT_EQ(backslashesToCommas(L""), L"");
}

TEST(UmpdTextTest, LastComponentFollowsTheLastSeparator) {
  EXPECT_EQ(lastComponent(L"C:\\a\\b.pdf", L"\\"), L"b.pdf");
  EXPECT_EQ(lastComponent(L"C:\\a/b.pdf", L"\\"), L"a/b.pdf");
  EXPECT_EQ(lastComponent(L"C:\\a/b.pdf", L"\\/"), L"b.pdf");
  EXPECT_EQ(lastComponent(L"C:/a\\b.pdf", L"\\/"), L"b.pdf");
  EXPECT_EQ(lastComponent(L"b.pdf", L"\\/"), L"b.pdf");
  EXPECT_EQ(lastComponent(L"a\\", L"\\/"), L"");
  EXPECT_EQ(lastComponent(L"", L"\\/"), L"");
}

TEST(UmpdTextTest, FittingLeavesRoomForTheFinalZero) {
  EXPECT_EQ(fitting(L"abc", 5), L"abc");
  EXPECT_EQ(fitting(L"abc", 4), L"abc");
  EXPECT_EQ(fitting(L"abc", 3), L"ab");
  EXPECT_EQ(fitting(L"abc", 1), L"");
  EXPECT_EQ(fitting(L"abc", 0), L"");
}

TEST(UmpdTextTest, AFieldHoldsTextUpToItsFirstZero) {
  const wchar_t field[] = {L'a', L'b', L'\0', L'c'};
  EXPECT_EQ(textOfField(field, 4), L"ab");
  EXPECT_EQ(textOfField(field, 2), L"ab");
  EXPECT_EQ(textOfField(field, 1), L"a");
  EXPECT_EQ(textOfField(field, 0), L"");
  EXPECT_EQ(textOfField(nullptr, 0), L"");
}

TEST(UmpdTextTest, ANullPointerReadsAsEmpty) {
  EXPECT_EQ(textOrEmpty(nullptr), L"");
  EXPECT_EQ(textOrEmpty(L"a"), L"a");
}

}  // namespace
}  // namespace quillpress::driver
