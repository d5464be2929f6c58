#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <optional>

#include "cli/system/TemporaryName.h"
#include "cli/system/posix/BlockedSignals.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

void writeText(const Descriptor& file, std::string_view text) {
  EXPECT_EQ(write(file.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

class TemporaryNameTest : public FolderTest {
 protected:
  // The status with which a child that does `work` ends.
  template <typename Work>
  static int statusOfChild(Work work) {
    const pid_t child = fork();
    if (child == 0) {
      work();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
  }

  void raiseWithName(int number) const {
    TemporaryName name;
    const Descriptor file = name.create(folder());
    if (file) raise(number);
  }
};

TEST_F(TemporaryNameTest, ACreatedFileHasItsNameAsLongAsTheOwnerLives) {
  {
    TemporaryName name;
    const Descriptor file = name.create(folder());
    ASSERT_TRUE(file);
    ASSERT_EQ(files().size(), 1U);
    EXPECT_TRUE(files()[0].starts_with(".quillpress-"));
  }
  EXPECT_TRUE(files().empty());
}

TEST_F(TemporaryNameTest, MovingReplacesTheTarget) {
  write("target", "before");
  {
    TemporaryName name;
    const Descriptor file = name.create(folder());
    writeText(file, "after");
    EXPECT_TRUE(name.moveTo(file, path("target")));
  }
  EXPECT_EQ(files(), std::vector<std::string>{"target"});
  EXPECT_EQ(read("target"), "after");
}

TEST_F(TemporaryNameTest, ANamelessFileGetsAName) {
  const Descriptor file = openNameless(folder());
  ASSERT_TRUE(file);
  EXPECT_TRUE(files().empty());
  writeText(file, "text");
  TemporaryName name;
  ASSERT_TRUE(canLinkNameless());
  ASSERT_TRUE(name.link(file, folder()));
  EXPECT_EQ(files().size(), 1U);
  ASSERT_TRUE(name.moveTo(file, path("target")));
  EXPECT_EQ(files(), std::vector<std::string>{"target"});
  EXPECT_EQ(read("target"), "text");
}

TEST_F(TemporaryNameTest, ANamelessFileTakesAFreePlaceAtOnce) {
  const Descriptor file = openNameless(folder());
  writeText(file, "text");
  ASSERT_TRUE(linkNameless(file, path("target")));
  EXPECT_EQ(files(), std::vector<std::string>{"target"});
  EXPECT_EQ(read("target"), "text");
}

TEST_F(TemporaryNameTest, ANamelessFileReplacesNothingAtOnce) {
  write("target", "before");
  const Descriptor file = openNameless(folder());
  EXPECT_FALSE(linkNameless(file, path("target")));
  EXPECT_EQ(read("target"), "before");
}

TEST_F(TemporaryNameTest, NoTwoNamesAreAlike) {
  const Descriptor file = openNameless(folder());
  TemporaryName one;
  TemporaryName another;
  EXPECT_TRUE(one.link(file, folder()));
  EXPECT_TRUE(another.link(file, folder()));
  EXPECT_EQ(files().size(), 2U);
}

TEST_F(TemporaryNameTest, AFolderThatIsMissingTakesNone) {
  TemporaryName name;
  EXPECT_FALSE(name.create(path("missing")));
  EXPECT_FALSE(name.link(openNameless(folder()), path("missing")));
  EXPECT_FALSE(linkNameless(openNameless(folder()), path("missing/target")));
  EXPECT_FALSE(openNameless(path("missing")));
}

TEST_F(TemporaryNameTest, EachEndingSignalRemovesTheNameAndStillEnds) {
  for (const int number : kEndingSignals) {
    const int status = statusOfChild([&] {
      // Who runs the tests may have chosen to ignore some.
      signal(number, SIG_DFL);
      raiseWithName(number);
    });
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << number;
    EXPECT_TRUE(files().empty()) << number;
  }
}

TEST_F(TemporaryNameTest, AnIgnoredSignalStaysIgnored) {
  const int status = statusOfChild([&] {
    signal(SIGHUP, SIG_IGN);
    raiseWithName(SIGHUP);
  });
  EXPECT_TRUE(WIFEXITED(status));
}

TEST_F(TemporaryNameTest, ASignalAfterTheMoveLeavesTheTarget) {
  const int status = statusOfChild([&] {
    TemporaryName name;
    const Descriptor file = name.create(folder());
    if (name.moveTo(file, path("target"))) raise(SIGTERM);
  });
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(files(), std::vector<std::string>{"target"});
}

TEST_F(TemporaryNameTest, BlockedSignalsActAfterwards) {
  const int status = statusOfChild([&] {
    std::optional<BlockedSignals> quiet(std::in_place);
    raise(SIGTERM);
    write("reached", "");
    quiet.reset();
    write("missed", "");
  });
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
  EXPECT_EQ(files(), std::vector<std::string>{"reached"});
}

}  // namespace
}  // namespace quillpress::cli
