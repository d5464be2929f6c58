#include <gtest/gtest.h>

#include "cli/system/Files.h"
#include "cli/system/Paths.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

using PathsTest = FolderTest;

TEST_F(PathsTest, NamesComeBackAsTheyWent) {
  for (const char* const name : {"job.ps", "\xD0\xBE\xD1\x82/\xE6\x97\xA5.pdf", "", "a b", "../x"}) {
    EXPECT_EQ(utf8Of(pathOf(name)), name);
  }
}

TEST_F(PathsTest, AnEndingIsFoundBehindLettersOfAllKinds) {
  EXPECT_EQ(utf8Of(pathOf("\xD0\xBE\xD1\x82/\xE6\x97\xA5.ps").stem()), "\xE6\x97\xA5");
}

TEST_F(PathsTest, ANameWithoutALinkLeadsToItself) {
  const std::string file = write("job.ps", "");
  const auto status = statusOf(whereLinksLead(file));
  ASSERT_TRUE(status);
  EXPECT_TRUE(status->isSameFileAs(*statusOf(file)));
  EXPECT_EQ(whereLinksLead(path("missing")), path("missing"));
}

TEST_F(PathsTest, TemporaryFilesHaveAFolder) {
  const auto status = statusOf(temporaryFolder());
  ASSERT_TRUE(status);
  EXPECT_EQ(status->kind, FileStatus::Kind::kFolder);
}

}  // namespace
}  // namespace quillpress::cli
