#include <gtest/gtest.h>

#include "tools/launcher/CommandLine.h"

namespace quillpress::launcher {
namespace {

using Arguments = std::vector<std::wstring>;

TEST(LauncherCommandLineTest, SplitsAtBlanks) {
  EXPECT_EQ(splitCommandLine(L"a b\tc"), (Arguments{L"a", L"b", L"c"}));
  EXPECT_EQ(splitCommandLine(L"  a   b  "), (Arguments{L"a", L"b"}));
}

TEST(LauncherCommandLineTest, NothingHasNoArguments) {
  EXPECT_EQ(splitCommandLine(L""), Arguments{});
  EXPECT_EQ(splitCommandLine(L" \t"), Arguments{});
}

TEST(LauncherCommandLineTest, QuotesKeepBlanks) {
  EXPECT_EQ(splitCommandLine(LR"(a "b c" d"e f"g)"), (Arguments{L"a", L"b c", L"de fg"}));
  EXPECT_EQ(splitCommandLine(LR"(a "" b)"), (Arguments{L"a", L"", L"b"}));
}

TEST(LauncherCommandLineTest, AMissingQuoteEndsWithTheLine) {
  EXPECT_EQ(splitCommandLine(LR"(a "b c)"), (Arguments{L"a", L"b c"}));
  EXPECT_EQ(splitCommandLine(LR"("a b)"), (Arguments{L"a b"}));
}

TEST(LauncherCommandLineTest, InTheProgramBackslashesAreNeverSpecial) {
  EXPECT_EQ(splitCommandLine(LR"("C:\a b\" c)"), (Arguments{LR"(C:\a b\)", L"c"}));
}

TEST(LauncherCommandLineTest, BackslashesCountOnlyBeforeAQuote) {
  EXPECT_EQ(splitCommandLine(LR"(a b\\c)"), (Arguments{L"a", LR"(b\\c)"}));
  EXPECT_EQ(splitCommandLine(LR"(a b\"c)"), (Arguments{L"a", LR"(b"c)"}));
  EXPECT_EQ(splitCommandLine(LR"(a b\\"c d")"), (Arguments{L"a", LR"(b\c d)"}));
  EXPECT_EQ(splitCommandLine(LR"(a b\\\"c d)"), (Arguments{L"a", LR"(b\"c)", L"d"}));
  EXPECT_EQ(splitCommandLine(LR"(a b\)"), (Arguments{L"a", LR"(b\)"}));
}

TEST(LauncherCommandLineTest, ADoubledQuoteWithinQuotesIsOne) {
  EXPECT_EQ(splitCommandLine(LR"(a "b""c d")"), (Arguments{L"a", LR"(b"c d)"}));
}

TEST(LauncherCommandLineTest, TheProgramIsAlwaysQuoted) {
  EXPECT_EQ(joinCommandLine({LR"(C:\Program Files\viewer.exe)"}), LR"("C:\Program Files\viewer.exe")");
  EXPECT_EQ(joinCommandLine({L"viewer"}), LR"("viewer")");
}

TEST(LauncherCommandLineTest, OtherArgumentsAreQuotedWhenTheyMustBe) {
  EXPECT_EQ(joinCommandLine({L"a", L"b", L"c d", L"", L"e\tf"}), L"\"a\" b \"c d\" \"\" \"e\tf\"");
}

TEST(LauncherCommandLineTest, WhateverIsJoinedSplitsIntoTheSame) {
  const Arguments hostile{
      LR"(C:\a b\)",   L"",           L" ",         LR"(")",    LR"("")",    LR"(\)",
      LR"(\\)",        LR"(\")",      LR"(\\" \\)", LR"(a b\)", LR"(a b\\)", L"a\nb",
      LR"(" -evil ")", LR"(\" -x \)", L"%s",        L"& del *", L"|",        LR"(""\"" "\)"};
  EXPECT_EQ(splitCommandLine(joinCommandLine(hostile)), hostile);
}

}  // namespace
}  // namespace quillpress::launcher
