// What only Windows does with names.

#include <gtest/gtest.h>

#include "cli/system/Paths.h"
#include "cli/system/windows/WideText.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class NamesTest : public FolderTest {};

TEST_F(NamesTest, BytesThatAreNoUtf8AreReplaced) {
  EXPECT_EQ(wideText("a\xFFz"), L"a\uFFFDz");
  EXPECT_EQ(utf8Text(L"\xD800"), "\xEF\xBF\xBD");
  EXPECT_EQ(utf8Text(wideText("\xF0\x9F\x96\xA8")), "\xF0\x9F\x96\xA8");
}

TEST_F(NamesTest, OnlyLongPathsGetAPrefix) {
  const std::string deep = "C:\\" + std::string(200, 'a') + "\\" + std::string(100, 'b');
  EXPECT_EQ(widePath("C:/a.ps"), L"C:/a.ps");
  EXPECT_EQ(widePath(deep), L"\\\\?\\" + wideText(deep));
  EXPECT_EQ(widePath("\\\\server\\share\\" + deep.substr(3)),
            L"\\\\?\\UNC\\server\\share\\" + wideText(deep.substr(3)));
  EXPECT_EQ(utf8Of(pathOf(deep)), deep);
}

TEST_F(NamesTest, SpellingsOfAPlaceAreOne) {
  EXPECT_EQ(comparableName(pathOf("C:/Out/\xC3\xA4.pdf")), comparableName(pathOf("c:\\out\\\xC3\x84.PDF")));
  EXPECT_NE(comparableName(pathOf("C:/Out/a.pdf")), comparableName(pathOf("C:/Out/b.pdf")));
}

TEST_F(NamesTest, APatternStandsForTheFilesOfItsFolder) {
  write("b.ps", "");
  write("a.ps", "");
  write("c.txt", "");
  std::filesystem::create_directory(pathOf(path("folder.ps")));
  EXPECT_EQ(expanded(path("*.ps")), (std::vector<std::string>{path("a.ps"), path("b.ps")}));
  EXPECT_EQ(expanded(path("?.ps")), (std::vector<std::string>{path("a.ps"), path("b.ps")}));
  EXPECT_EQ(expanded(path("a.ps")), std::vector<std::string>{path("a.ps")});
  EXPECT_EQ(expanded(path("*.eps")), std::vector<std::string>{path("*.eps")});
  EXPECT_EQ(expanded("-"), std::vector<std::string>{"-"});
}

}  // namespace
}  // namespace quillpress::cli
