#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/base/Tasks.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

using Jobs = std::vector<std::string>;

class TasksTest : public FolderTest {
 protected:
  static Options options(const Jobs& jobs) {
    Options result;
    result.jobs = jobs;
    return result;
  }

  static std::string outputOf(const std::string& job) { return tasksOf(options({job})).front().output; }

  static void expectRefused(const Options& options, const std::string& says) {
    try {
      tasksOf(options);
      ADD_FAILURE() << "not refused: " << says;
    } catch (const UsageError& error) {
      EXPECT_NE(std::string(error.what()).find(says), std::string::npos) << error.what();
    }
  }
};

TEST_F(TasksTest, EndingsOfJobsAreReplacedAndOthersKept) {
  EXPECT_EQ(outputOf("dir.ps/a.EPS"), "dir.ps/a.pdf");
  EXPECT_EQ(outputOf("a.prn"), "a.pdf");
  EXPECT_EQ(outputOf("a.txt"), "a.txt.pdf");
}

TEST_F(TasksTest, SeveralJobsGoBesideThemselves) {
  const std::vector<Task> expected{{"a.ps", "a.pdf"}, {"b/a.ps", "b/a.pdf"}};
  EXPECT_EQ(tasksOf(options({"a.ps", "b/a.ps"})), expected);
}

TEST_F(TasksTest, AFolderTakesAllOfThem) {
  Options asked = options({"a.ps", "b/c.eps"});
  asked.folder = "out";
  const std::vector<Task> expected{{"a.ps", "out/a.pdf"}, {"b/c.eps", "out/c.pdf"}};
  EXPECT_EQ(tasksOf(asked), expected);
}

TEST_F(TasksTest, ContentGoesToStandardOutput) {
  for (const char* const job : {"job.ps", "-"}) {
    Options asked = options({job});
    asked.content = true;
    EXPECT_EQ(tasksOf(asked).front().output, "-");
  }
}

TEST_F(TasksTest, AProgramHasNoOutput) {
  Options asked = options({"job.ps"});
  asked.run = true;
  EXPECT_EQ(tasksOf(asked), (std::vector<Task>{{"job.ps", ""}}));
}

TEST_F(TasksTest, JobsWithOneOutputAreRefused) {
  expectRefused(options({"job001.ps", "job001.eps"}),
                "job001.pdf would be written by job001.ps and by job001.eps");
  Options asked = options({"a/x.ps", "b/x.ps"});
  asked.folder = "out";
  expectRefused(asked, "out/x.pdf would be written by");
}

TEST_F(TasksTest, OnePlaceIsFoundBehindTwoNames) {
  std::filesystem::create_directory(path("real"));
  std::filesystem::create_directory_symlink("real", path("link"));
  expectRefused(options({path("real/a.ps"), path("link/a.ps")}), "would be written by");
  write("x.pdf", "");
  std::filesystem::create_symlink("x.pdf", path("y.pdf"));
  expectRefused(options({path("x.ps"), path("y.ps")}), "would be written by");
}

TEST_F(TasksTest, AnOutputThatIsAnotherJobIsRefused) {
  expectRefused(options({"a.ps", "a.pdf"}), "a.pdf, the output of a.ps, would replace a job");
}

TEST_F(TasksTest, WhatIsForOneJobIsRefusedForSeveral) {
  Options toOneFile = options({"a.ps", "b.ps"});
  toOneFile.output = "x.pdf";
  expectRefused(toOneFile, "--output is for one job");
  Options program = options({"a.ps", "b.ps"});
  program.run = true;
  expectRefused(program, "--run is for one program");
  Options content = options({"a.ps", "b.ps"});
  content.content = true;
  expectRefused(content, "--content is for one job");
  expectRefused(options({"a.ps", "-"}), "standard input is for one job alone");
}

TEST_F(TasksTest, PlacesThatContradictEachOtherAreRefused) {
  Options both = options({"a.ps"});
  both.output = "x.pdf";
  both.folder = "out";
  expectRefused(both, "do not go together");
  Options unnamed = options({"-"});
  unnamed.folder = "out";
  expectRefused(unnamed, "standard input has no name");
}

TEST_F(TasksTest, TheOptionsForATaskNameItAlone) {
  Options asked = options({"a.ps", "b.ps"});
  asked.rotation = 90;
  const Options one = optionsFor(asked, {"b.ps", "b.pdf"});
  EXPECT_EQ(one.job, "b.ps");
  EXPECT_EQ(one.output, "b.pdf");
  EXPECT_EQ(one.rotation, 90);
}

}  // namespace
}  // namespace quillpress::cli
