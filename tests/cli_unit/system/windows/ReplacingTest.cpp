// What stands in the way of replacing a file, and what is left when its process is killed.

#include <gtest/gtest.h>

#include <cerrno>

#include "cli/system/Files.h"
#include "cli/system/Paths.h"
#include "cli/system/TemporaryName.h"
#include "cli/system/windows/Handle.h"
#include "cli/system/windows/WideText.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class ReplacingTest : public FolderTest {
 protected:
  [[nodiscard]] bool replaces(const std::string& name) const {
    TemporaryName temporary;
    const Descriptor file = temporary.create(folder());
    EXPECT_EQ(writeTo(file, "after"), 5);
    return temporary.moveTo(file, path(name));
  }
};

TEST_F(ReplacingTest, AProtectedFileIsNotWritable) {
  const std::wstring file = widePath(write("protected", "before"));
  SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
  errno = 0;
  EXPECT_FALSE(isWritable(path("protected")));
  EXPECT_EQ(errno, EACCES);
  SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_TRUE(isWritable(path("protected")));
}

TEST_F(ReplacingTest, AFileThatAViewerHoldsStays) {
  write("shown", "before");
  Handle viewer(CreateFileW(widePath(path("shown")).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(viewer);
  EXPECT_FALSE(isWritable(path("shown")));
  errno = 0;
  EXPECT_FALSE(replaces("shown"));
  EXPECT_EQ(errno, EACCES);
  EXPECT_EQ(files(), std::vector<std::string>{"shown"});
  EXPECT_EQ(read("shown"), "before");
  viewer = Handle();
  EXPECT_TRUE(replaces("shown"));
  EXPECT_EQ(read("shown"), "after");
}

TEST_F(ReplacingTest, AFileOnItsWayGoesWithItsLastHandle) {
  auto* const lost = new TemporaryName;
  {
    const Descriptor file = lost->create(folder());
    EXPECT_EQ(files().size(), 1U);
  }
  // As when a process is killed, whose objects are not destroyed either.
  EXPECT_TRUE(files().empty());
  delete lost;
}

TEST_F(ReplacingTest, StandardOutputNeedsNoFolderForItsFiles) {
  std::wstring before(MAX_PATH, L'\0');
  before.resize(GetEnvironmentVariableW(L"TMP", before.data(), MAX_PATH));
  SetEnvironmentVariableW(L"TMP", L"C:\\no such folder");
  EXPECT_EQ(temporaryFolder(), ".");
  SetEnvironmentVariableW(L"TMP", before.c_str());
  EXPECT_NE(temporaryFolder(), ".");
}

}  // namespace
}  // namespace quillpress::cli
