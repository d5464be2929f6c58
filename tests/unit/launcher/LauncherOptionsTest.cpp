#include <gtest/gtest.h>

#include "tools/launcher/Options.h"

namespace quillpress::launcher {
namespace {

using Arguments = std::vector<std::wstring>;

Options parse(const Arguments& arguments) {
  std::wstring complaint;
  const auto options = parseOptions(arguments, complaint);
  EXPECT_TRUE(options);
  EXPECT_EQ(complaint, L"");
  return options.value_or(Options{});
}

std::wstring complaintAboutArguments(const Arguments& arguments) {
  std::wstring complaint;
  EXPECT_FALSE(parseOptions(arguments, complaint));
  return complaint;
}

TEST(LauncherOptionsTest, WithoutOptionsItListensForEver) {
  const Options options = parse({});
  EXPECT_EQ(options.logFile, L"");
  EXPECT_FALSE(options.command);
  EXPECT_EQ(options.leaveAfter, LeaveAfter::kNothing);
  EXPECT_FALSE(options.timeLimit);
  EXPECT_FALSE(options.help);
  EXPECT_EQ(options.conversion, Conversion::kWhenInstalled);
  EXPECT_EQ(options.folder, L"");
  EXPECT_FALSE(options.fileOnly);
}

TEST(LauncherOptionsTest, ReadsEachOption) {
  const Options options =
      parse({L"--log", L"a b.log", L"--run", L"viewer \"%s\"", L"--exit-after", L"90", L"--help"});
  EXPECT_EQ(options.logFile, L"a b.log");
  ASSERT_TRUE(options.command);
  EXPECT_EQ(options.command->commandLine(L"p", L"d"), L"\"viewer\" p");
  EXPECT_EQ(options.timeLimit, std::chrono::seconds(90));
  EXPECT_TRUE(options.help);
}

TEST(LauncherOptionsTest, ConversionsCanBeAskedForAndRefused) {
  EXPECT_EQ(parse({L"--convert"}).conversion, Conversion::kAlways);
  EXPECT_EQ(parse({L"--no-convert"}).conversion, Conversion::kNever);
  const Options options = parse({L"--folder", L"C:\\Archive", L"--file-only"});
  EXPECT_EQ(options.folder, L"C:\\Archive");
  EXPECT_TRUE(options.fileOnly);
  EXPECT_EQ(options.conversion, Conversion::kWhenInstalled);
}

TEST(LauncherOptionsTest, TheLastWordCounts) {
  EXPECT_EQ(parse({L"--once", L"--until-stopprint"}).leaveAfter, LeaveAfter::kFirstStopPrint);
  EXPECT_EQ(parse({L"--until-stopprint", L"--once"}).leaveAfter, LeaveAfter::kFirstMessage);
  EXPECT_EQ(parse({L"--log", L"a", L"--log", L"b"}).logFile, L"b");
  EXPECT_EQ(parse({L"--convert", L"--no-convert"}).conversion, Conversion::kNever);
}

TEST(LauncherOptionsTest, ATimeLimitIsAFewDigits) {
  EXPECT_EQ(parse({L"--exit-after", L"0"}).timeLimit, std::chrono::seconds(0));
  EXPECT_EQ(parse({L"--exit-after", L"999999"}).timeLimit, std::chrono::seconds(999999));
  for (const wchar_t* text : {L"x", L"1x", L"-1", L"1.5", L" 1", L"1000000", L"99999999999999999999"}) {
    EXPECT_EQ(complaintAboutArguments({L"--exit-after", text}),
              std::wstring(L"not a number of seconds: ") + text);
  }
}

TEST(LauncherOptionsTest, ValuesCannotBeMissing) {
  for (const wchar_t* option : {L"--log", L"--run", L"--exit-after", L"--folder"}) {
    const std::wstring complaint = std::wstring(option) + L" needs a value";
    EXPECT_EQ(complaintAboutArguments({option}), complaint);
    EXPECT_EQ(complaintAboutArguments({option, L""}), complaint);
  }
}

TEST(LauncherOptionsTest, NamesTheFirstMistake) {
  EXPECT_EQ(complaintAboutArguments({L"--verbose", L"--wrong"}), L"unknown option --verbose");
  EXPECT_EQ(complaintAboutArguments({L"file"}), L"unknown option file");
  EXPECT_EQ(complaintAboutArguments({L"--run", L"a.bat", L"--wrong"}),
            L"the command cannot be a batch file: names would be read as commands");
}

}  // namespace
}  // namespace quillpress::launcher
