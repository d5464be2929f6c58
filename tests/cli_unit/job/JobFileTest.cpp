#include <fcntl.h>
#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/job/JobFile.h"
#include "tests/cli_unit/TemporaryFolder.h"
#include "tests/cli_unit/job/RecordingSink.h"

namespace quillpress::cli {
namespace {

using std::string_literals::operator""s;

class JobFileTest : public FolderTest {
 protected:
  static std::string pumped(const std::string& path) {
    RecordingSink sink;
    JobFile(path).pumpInto(sink);
    EXPECT_TRUE(sink.isFinished());
    return sink.text();
  }

  static void expectRefused(const std::string& path, const std::string& says) {
    try {
      pumped(path);
      ADD_FAILURE() << "read";
    } catch (const InputError& error) {
      EXPECT_TRUE(std::string(error.what()).starts_with(says)) << error.what();
    }
  }
};

TEST_F(JobFileTest, AllBytesComeInOrder) {
  std::string job;
  for (int i = 0; i < 50000; ++i) job += std::to_string(i) + " ";
  EXPECT_EQ(pumped(write("job.ps", job)), job);
}

TEST_F(JobFileTest, OfADosEpsFileOnlyThePostScriptComes) {
  const std::string header = "\xC5\xD0\xD3\xC6\x0E\x00\x00\x00\x04\x00\x00\x00"s;
  EXPECT_EQ(pumped(write("job.eps", header + "xx%!PSpreview")), "%!PS");
}

TEST_F(JobFileTest, WhatCannotBeReadIsRefused) {
  expectRefused(path("missing.ps"), "cannot be opened: No such file");
  expectRefused(folder(), "is a directory");
  expectRefused(write("empty.ps", ""), "is empty");
}

TEST_F(JobFileTest, ItKnowsItselfUnderAnotherName) {
  const std::string job = write("job.ps", "%!");
  std::filesystem::create_symlink("job.ps", path("link.ps"));
  std::filesystem::create_hard_link(job, path("twin.ps"));
  write("other.ps", "%!");
  const JobFile file(job);
  for (const char* const name : {"job.ps", "link.ps", "twin.ps"})
    EXPECT_TRUE(file.isSameAs(path(name))) << name;
  for (const char* const name : {"other.ps", "missing.ps"}) EXPECT_FALSE(file.isSameAs(path(name))) << name;
  EXPECT_FALSE(JobFile("/dev/null").isSameAs("/dev/null"));
}

TEST_F(JobFileTest, ItKnowsItselfAsStandardOutput) {
  const std::string job = write("job.ps", "%!");
  const Descriptor before(dup(STDOUT_FILENO));
  const Descriptor appending(open(job.c_str(), O_WRONLY | O_APPEND));
  dup2(appending.get(), STDOUT_FILENO);
  const bool isSame = JobFile(job).isSameAs("-");
  dup2(before.get(), STDOUT_FILENO);
  EXPECT_TRUE(isSame);
}

}  // namespace
}  // namespace quillpress::cli
