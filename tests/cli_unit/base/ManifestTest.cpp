#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/base/Manifest.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class ManifestTest : public FolderTest {
 protected:
  [[nodiscard]] std::vector<ManifestLine> read(const std::string& text) const {
    return readManifest(write("list", text));
  }
};

TEST_F(ManifestTest, LinesAreJobsWithAndWithoutOutputs) {
  const std::vector<ManifestLine> expected{{"a b.ps", ""}, {"c.ps", "d.pdf"}};
  EXPECT_EQ(read("a b.ps\nc.ps\td.pdf\n"), expected);
  EXPECT_EQ(read("a b.ps\r\n\r\n\nc.ps\td.pdf"), expected);
  EXPECT_TRUE(read("").empty());
}

TEST_F(ManifestTest, OtherLinesAreRefused) {
  for (const char* const text : {"\tb", "a\t", "a\tb\tc", "\t", "-", "a\t-"})
    EXPECT_THROW(static_cast<void>(read(text)), UsageError) << text;
}

TEST_F(ManifestTest, AFileThatCannotBeReadIsAnInputError) {
  EXPECT_THROW(static_cast<void>(readManifest(path("none"))), InputError);
  EXPECT_THROW(static_cast<void>(readManifest(folder())), InputError);
}

}  // namespace
}  // namespace quillpress::cli
