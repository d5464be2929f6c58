#include <gtest/gtest.h>

#include "umpd/rules/OutputPath.h"

namespace quillpress::driver {
namespace {

TEST(PathRulesTest, APathOf260CharactersStays) {
  const std::wstring path = L"C:\\" + std::wstring(253, L'n') + L".pdf";
  ASSERT_EQ(path.size(), 260U);
  EXPECT_EQ(withinPathLimit(path), path);
  EXPECT_EQ(withinPathLimit(L"C:\\a.pdf"), L"C:\\a.pdf");
  EXPECT_EQ(withinPathLimit(L""), L"");
}

TEST(PathRulesTest, TheNameOfALongerOneIsCutBelow260) {
  const std::wstring cut = withinPathLimit(L"C:\\" + std::wstring(254, L'n') + L".pdf");
  EXPECT_EQ(cut, L"C:\\" + std::wstring(252, L'n') + L".pdf");
  EXPECT_EQ(cut.size(), 259U);
}

TEST(PathRulesTest, FolderAndExtensionStay) {
  const std::wstring folder = L"C:\\" + std::wstring(100, L'a') + L"\\" + std::wstring(100, L'b') + L"\\";
  EXPECT_EQ(withinPathLimit(folder + std::wstring(200, L'n') + L".tiff"),
            folder + std::wstring(259 - folder.size() - 5, L'n') + L".tiff");
}

TEST(PathRulesTest, TheLastDotBeginsTheExtension) {
  EXPECT_EQ(withinPathLimit(L"C:\\" + std::wstring(100, L'n') + L"." + std::wstring(200, L'm') + L".pdf"),
            L"C:\\" + std::wstring(100, L'n') + L"." + std::wstring(151, L'm') + L".pdf");
}

TEST(PathRulesTest, APathMayHaveNoExtension) {
  EXPECT_EQ(withinPathLimit(L"C:\\" + std::wstring(300, L'n')), L"C:\\" + std::wstring(256, L'n'));
}

TEST(PathRulesTest, APathMayHaveNoDriveOrFolder) {
  EXPECT_EQ(withinPathLimit(std::wstring(300, L'n') + L".pdf"), std::wstring(255, L'n') + L".pdf");
  EXPECT_EQ(withinPathLimit(L"C:" + std::wstring(300, L'n') + L".pdf"),
            L"C:" + std::wstring(253, L'n') + L".pdf");
  EXPECT_EQ(withinPathLimit(L"\\\\server\\share\\" + std::wstring(300, L'n') + L".pdf"),
            L"\\\\server\\share\\" + std::wstring(240, L'n') + L".pdf");
}

TEST(PathRulesTest, EitherSeparatorEndsAFolder) {
  EXPECT_EQ(withinPathLimit(L"C:\\a/" + std::wstring(300, L'n') + L".pdf"),
            L"C:\\a/" + std::wstring(250, L'n') + L".pdf");
}

TEST(PathRulesTest, ADotInAFolderIsNoExtension) {
  EXPECT_EQ(withinPathLimit(L"C:\\a.b\\" + std::wstring(300, L'n')), L"C:\\a.b\\" + std::wstring(252, L'n'));
}

TEST(PathRulesTest, FoldersAreKeptBelow258Characters) {
  // 2 + 251 + 4 are 257: two characters of the name have room.
  const std::wstring folder = L"\\" + std::wstring(249, L'f') + L"\\";
  EXPECT_EQ(withinPathLimit(L"C:" + folder + L"names.pdf"), L"C:" + folder + L"na.pdf");
}

TEST(PathRulesTest, FoldersAreDroppedFrom258CharactersOn) {
  const std::wstring folder = L"\\" + std::wstring(250, L'f') + L"\\";
  EXPECT_EQ(withinPathLimit(L"C:" + folder + L"names.pdf"), L"C:\\names.pdf");
  EXPECT_EQ(withinPathLimit(L"C:\\" + std::wstring(400, L'f') + L"\\names.pdf"), L"C:\\names.pdf");
}

TEST(PathRulesTest, ALongNameIsCutAfterItsFolderWasDropped) {
  EXPECT_EQ(withinPathLimit(L"C:\\" + std::wstring(300, L'f') + L"\\" + std::wstring(300, L'n') + L".pdf"),
            L"C:\\" + std::wstring(252, L'n') + L".pdf");
}

TEST(PathRulesTest, AnExtensionOfAnyLengthStaysWithinTheLimit) {
  const std::wstring cut = withinPathLimit(L"C:\\a." + std::wstring(400, L'e'));
  EXPECT_LT(cut.size(), 260U);
  EXPECT_TRUE(cut.starts_with(L"C:\\")) << cut;
}

TEST(PathRulesTest, TheFolderIsBeforeTheLastSeparator) {
  EXPECT_EQ(folderOf(L"C:\\a\\b.pdf"), L"C:\\a");
  EXPECT_EQ(folderOf(L"C:\\a/b.pdf"), L"C:\\a");
  EXPECT_EQ(folderOf(L"C:/a\\b.pdf"), L"C:/a");
  EXPECT_EQ(folderOf(L"C:\\b.pdf"), L"C:");
  EXPECT_EQ(folderOf(L"C:\\a\\"), L"C:\\a");
  EXPECT_EQ(folderOf(L"b.pdf"), L"");
  EXPECT_EQ(folderOf(L"\\b.pdf"), L"");
}

using Folders = std::vector<std::wstring>;

TEST(PathRulesTest, FoldersAreListedOutermostFirst) {
  EXPECT_EQ(folderChain(L"C:\\a\\b"), (Folders{L"C:", L"C:\\a", L"C:\\a\\b"}));
  EXPECT_EQ(folderChain(L"C:/a/b"), (Folders{L"C:", L"C:/a", L"C:/a/b"}));
  EXPECT_EQ(folderChain(L"a"), (Folders{L"a"}));
  EXPECT_EQ(folderChain(L""), Folders());
}

TEST(PathRulesTest, TheListOfFoldersEndsWithTheFolderItself) {
  for (const std::wstring folder : {L"\\\\server\\share\\a", L"\\a\\b", L"C:", L"a\\\\b", L"..\\a"}) {
    const Folders chain = folderChain(folder);
    ASSERT_FALSE(chain.empty()) << folder;
    EXPECT_EQ(chain.back(), folder);
    for (const std::wstring& each : chain) EXPECT_TRUE(folder.starts_with(each)) << each;
  }
}

}  // namespace
}  // namespace quillpress::driver
