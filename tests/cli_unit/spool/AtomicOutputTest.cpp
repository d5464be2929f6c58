#include <gtest/gtest.h>
#include <sys/stat.h>

#include "cli/base/Errors.h"
#include "cli/spool/AtomicOutput.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class AtomicOutputTest : public FolderTest {
 protected:
  static void put(AtomicOutput& output, const char* text) { ASSERT_GE(std::fputs(text, output.file()), 0); }

  static unsigned permissions(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
  }
};

TEST_F(AtomicOutputTest, NothingIsThereBeforeTheCommit) {
  AtomicOutput output(path("out"));
  put(output, "text");
  EXPECT_TRUE(files().empty());
  output.commit();
  EXPECT_EQ(files(), std::vector<std::string>{"out"});
  EXPECT_EQ(read("out"), "text");
}

TEST_F(AtomicOutputTest, WithoutACommitTheOldFileStays) {
  write("out", "before");
  {
    AtomicOutput output(path("out"));
    put(output, "after");
  }
  EXPECT_EQ(files(), std::vector<std::string>{"out"});
  EXPECT_EQ(read("out"), "before");
}

TEST_F(AtomicOutputTest, ACommitReplacesTheOldFileAndKeepsItsPermissions) {
  chmod(write("out", "before").c_str(), 0604);
  AtomicOutput output(path("out"));
  put(output, "after");
  output.commit();
  EXPECT_EQ(read("out"), "after");
  EXPECT_EQ(permissions(path("out")), 0604U);
}

TEST_F(AtomicOutputTest, ANewFileHasThePermissionsOfTheProcess) {
  const mode_t before = umask(027);
  AtomicOutput output(path("out"));
  output.commit();
  umask(before);
  EXPECT_EQ(permissions(path("out")), 0640U);
}

TEST_F(AtomicOutputTest, TheFileBehindALinkIsReplaced) {
  write("real", "before");
  std::filesystem::create_symlink("real", path("link"));
  AtomicOutput output(path("link"));
  put(output, "after");
  output.commit();
  EXPECT_EQ(read("real"), "after");
  EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
}

TEST_F(AtomicOutputTest, TemporaryFilesStandBesideTheOutput) {
  EXPECT_EQ(AtomicOutput(path("out")).folder(), folder());
  EXPECT_EQ(AtomicOutput("out").folder(), ".");
}

TEST_F(AtomicOutputTest, DevicesAndStandardOutputUseTheTemporaryFolder) {
  setenv("TMPDIR", folder().c_str(), 1);
  EXPECT_EQ(AtomicOutput("/dev/null").folder(), folder());
  EXPECT_EQ(AtomicOutput("-").folder(), folder());
  unsetenv("TMPDIR");
  EXPECT_EQ(AtomicOutput("-").folder(), "/tmp");
}

TEST_F(AtomicOutputTest, AFolderIsRefusedAtOnce) {
  EXPECT_THROW(AtomicOutput{folder()}, OutputError);
}

TEST_F(AtomicOutputTest, AFolderThatIsMissingIsSaid) {
  AtomicOutput output(path("missing/out"));
  EXPECT_THROW(output.file(), OutputError);
}

TEST_F(AtomicOutputTest, ADeviceWithoutRoomIsSaid) {
  AtomicOutput output("/dev/full");
  put(output, "text");
  EXPECT_THROW(output.commit(), OutputError);
}

}  // namespace
}  // namespace quillpress::cli
