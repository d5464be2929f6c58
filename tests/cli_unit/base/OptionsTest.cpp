#include <gtest/gtest.h>

#include <vector>

#include "cli/base/Names.h"
#include "cli/base/Options.h"

namespace quillpress::cli {
namespace {

struct Parsed {
  std::optional<Options> options;
  ExitCode exit = ExitCode::kDone;
  std::string out;
  std::string err;
};

Parsed parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "quillpress");
  Parsed result;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  result.options = parseOptions(static_cast<int>(arguments.size()), arguments.data(), result.exit);
  result.out = testing::internal::GetCapturedStdout();
  result.err = testing::internal::GetCapturedStderr();
  return result;
}

void expectUsageError(const std::vector<const char*>& arguments, std::string_view says) {
  const Parsed parsed = parse(arguments);
  EXPECT_FALSE(parsed.options);
  EXPECT_EQ(parsed.exit, ExitCode::kUsage);
  EXPECT_NE(parsed.err.find(says), std::string::npos) << parsed.err;
  EXPECT_TRUE(parsed.err.ends_with("quillpress: try --help\n")) << parsed.err;
}

TEST(OptionsTest, AJobIsEnough) {
  const auto options = parse({"job.ps"}).options;
  ASSERT_TRUE(options);
  EXPECT_EQ(options->jobs, std::vector<std::string>{"job.ps"});
  EXPECT_EQ(options->output, "");
  EXPECT_EQ(options->chunkSize, 65536U);
  EXPECT_EQ(options->media, std::nullopt);
  EXPECT_FALSE(options->keepGoing || options->content || options->objects || options->messages);
}

TEST(OptionsTest, EverythingCanBeSaid) {
  const auto options = parse({"-", "-o", "x.pdf", "--media=A5", "--chunk=2K", "--keep-going", "--content",
                              "--objects", "--messages"})
                           .options;
  ASSERT_TRUE(options);
  EXPECT_EQ(options->output, "x.pdf");
  EXPECT_EQ(options->media, (Box{0, 0, 420, 595}));
  EXPECT_EQ(options->chunkSize, 2048U);
  EXPECT_TRUE(options->keepGoing && options->content && options->objects && options->messages);
}

TEST(OptionsTest, AProgramIsRunWithinItsLimits) {
  const auto options = parse({"job.ps", "--run", "--timeout=2.5", "--max-memory", "64"}).options;
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->run);
  EXPECT_EQ(options->output, "");
  EXPECT_EQ(options->timeout, 2.5);
  EXPECT_EQ(options->maxMemory, 64U * 1024 * 1024);
}

TEST(OptionsTest, FoldersToReadAddUp) {
  const auto options = parse({"--allow-read", "/", "--allow-read=/tmp", "job.ps"}).options;
  ASSERT_TRUE(options);
  EXPECT_EQ(options->readableFolders, (std::vector<std::string>{"/", "/tmp"}));
  EXPECT_EQ(options->jobs, std::vector<std::string>{"job.ps"});
}

TEST(OptionsTest, JobsStandAnywhere) {
  EXPECT_EQ(parse({"a.ps", "--media=A5", "b.ps"}).options->jobs, (std::vector<std::string>{"a.ps", "b.ps"}));
}

TEST(OptionsTest, ANameWithoutACharacterIsNoOutput) {
  expectUsageError({"job.ps", "-o", ""}, "an empty name");
  expectUsageError({"job.ps", "-d", ""}, "an empty name");
}

TEST(OptionsTest, PagesAreTurnedByRightAngles) {
  EXPECT_EQ(parse({"job.ps", "--rotate=90"}).options->rotation, 90);
  EXPECT_EQ(parse({"job.ps", "--rotate=-90"}).options->rotation, 270);
  EXPECT_EQ(parse({"job.ps", "--rotate=360"}).options->rotation, 0);
  for (const char* const angle : {"45", "450", "x", ""}) {
    expectUsageError({"job.ps", "--rotate", angle}, "not a multiple of 90 degrees");
  }
}

TEST(OptionsTest, PasswordsAndPermissionsImplyEncryption) {
  EXPECT_TRUE(parse({"job.ps", "--user-password=u"}).options->encrypt);
  EXPECT_TRUE(parse({"job.ps", "--owner-password=o", "--permissions=none"}).options->encrypt);
  expectUsageError({"job.ps", "--encrypt"}, "wants --user-password or --owner-password");
  expectUsageError({"job.ps", "--user-password", ""}, "wants --user-password or --owner-password");
  expectUsageError({"job.ps", "--user-password=u", "--permissions=copy"}, "wants --owner-password");
  expectUsageError({"job.ps", "--user-password=u", "--pdf-version=1.6"}, "wants --pdf-version 1.7");
}

TEST(OptionsTest, ListsAndVersionsAreReadWhole) {
  expectUsageError({"job.ps", "--pages", "2-x"}, "not a list of pages: \"2-x\"");
  expectUsageError({"job.ps", "--permissions", "fly"}, "not a list of permissions: \"fly\"");
  expectUsageError({"job.ps", "--pdf-version", "1.8"}, "not a version from 1.4 to 1.7, or 2.0: \"1.8\"");
}

TEST(OptionsTest, TheWholeLanguageIsReadUnlessAnOptionOfTheDriversDialectSaysOtherwise) {
  EXPECT_EQ(parse({"job.ps"}).options->dialect, Dialect::kFull);
  EXPECT_EQ(parse({"job.ps", "--dialect=driver"}).options->dialect, Dialect::kDriver);
  EXPECT_EQ(parse({"job.ps", "--chunk=1K"}).options->dialect, Dialect::kDriver);
  EXPECT_EQ(parse({"job.ps", "--objects"}).options->dialect, Dialect::kDriver);
  expectUsageError({"job.ps", "--dialect=full", "--content"}, "want --dialect driver");
}

TEST(OptionsTest, MistakesAreUsageErrors) {
  expectUsageError({}, "JOB is required");
  expectUsageError({"job.ps", "--media", "A99"}, "unknown page size \"A99\"");
  expectUsageError({"job.ps", "--chunk", "0"}, "not a number of bytes: \"0\"");
  expectUsageError({"job.ps", "--wrong"}, "--wrong");
  expectUsageError({"job.ps", "--dialect=Full"}, "neither driver nor full: \"Full\"");
  expectUsageError({"job.ps", "--allow-read=/none/such"}, "not a folder: \"/none/such\"");
  for (const char* const time : {"0", "-1", "nan", "inf", "1e10", "5s", ""}) {
    expectUsageError({"job.ps", "--timeout", time}, "not a number of seconds: \"" + std::string(time));
  }
  for (const char* const size : {"0", "-1", "1.5", "1048577", "1M", ""}) {
    expectUsageError({"job.ps", "--max-memory", size}, "not a number of megabytes: \"" + std::string(size));
  }
}

TEST(OptionsTest, MistakesCannotWriteToTheTerminal) {
  expectUsageError({"job.ps", "--media", "\x1B[2J"}, "\"\\x1B[2J\"");
}

TEST(OptionsTest, HelpNamesEachExitCode) {
  const Parsed parsed = parse({"--help"});
  EXPECT_FALSE(parsed.options);
  EXPECT_EQ(parsed.exit, ExitCode::kDone);
  for (const char* const code : {"0 done", "1 error", "2 usage", "3 input", "4 output",
                                 "5 done with warnings", "6 error in the job"}) {
    EXPECT_NE(parsed.out.find(code), std::string::npos) << code;
  }
}

TEST(OptionsTest, VersionIsTold) {
  EXPECT_TRUE(parse({"--version"}).out.starts_with("quillpress "));
}

TEST(NamesTest, StandardStreamsAreCalledByTheirNames) {
  EXPECT_EQ(jobName("-"), "standard input");
  EXPECT_EQ(outputName("-"), "standard output");
  EXPECT_EQ(jobName("job.ps"), "job.ps");
  EXPECT_EQ(outputName("job.pdf"), "job.pdf");
}

}  // namespace
}  // namespace quillpress::cli
