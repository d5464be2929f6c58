// Paths are kept within 260 characters.

#include <string>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

class PathLengthTest : public NamingTest {
 protected:
  ~PathLengthTest() override {
    DeleteFileW((L"C:\\" + std::wstring(252, L'n') + L".pdf").c_str());
    DeleteFileW((L"C:\\" + std::wstring(251, L'n') + L".pdf").c_str());
    DeleteFileW(L"C:\\quill.pdf");
    removeTree(L"C:\\" + std::wstring(249, L'f'));
    removeTree(L"C:\\" + std::wstring(250, L'f'));
  }

  // A name that makes a path of this length with ".pdf".
  [[nodiscard]] std::wstring nameForPathOf(std::size_t length) const {
    return std::wstring(length - inFolder(L"").size() - 4, L'n');
  }
};

TEST_F(PathLengthTest, Of260CharactersIsKept) {
  const std::wstring path = place(nameForPathOf(260));
  EXPECT_EQ(path, inFolder(nameForPathOf(260) + L".pdf"));
  EXPECT_EQ(path.size(), 260U);
}

TEST_F(PathLengthTest, Of261CharactersIsCutTo259) {
  const std::wstring path = place(nameForPathOf(261));
  EXPECT_EQ(path, inFolder(nameForPathOf(259) + L".pdf"));
  EXPECT_EQ(path.size(), 259U);
}

TEST_F(PathLengthTest, OfADocumentNameOf300CharactersIsCutTo259) {
  EXPECT_EQ(place(std::wstring(300, L'n')), inFolder(nameForPathOf(259) + L".pdf"));
}

TEST_F(PathLengthTest, LeavesALongExtensionWhole) {
  const std::wstring extension = L"." + std::wstring(38, L'e');
  setExtension(extension);
  const std::wstring path = place(std::wstring(259, L'n'));
  EXPECT_EQ(path.size(), 259U);
  EXPECT_EQ(path, inFolder(std::wstring(259 - inFolder(L"").size() - 39, L'n') + extension));
}

TEST_F(PathLengthTest, CutsADefaultNameBeforeItsOwnExtension) {
  setAction(1);
  setDefaultName(std::wstring(400, L'n') + L".txt");
  EXPECT_EQ(place(L""), inFolder(nameForPathOf(259) + L".txt"));
}

TEST_F(PathLengthTest, CutsANameWithoutAnExtension) {
  setAction(1);
  setDefaultName(std::wstring(300, L'n'));
  EXPECT_EQ(place(L""), inFolder(nameForPathOf(259) + L"nnnn"));
}

TEST_F(PathLengthTest, IsTakenAfterDecoding) {
  // One escape shortens the path to 260 characters.
  const std::wstring name = nameForPathOf(261).substr(2);
  EXPECT_EQ(place(L"%41" + name), inFolder(L"A" + name + L".pdf"));
}

// Drive, folder and extension together: 2 + 251 + 4.
TEST_F(PathLengthTest, LeavesAFolderWithRoomForTwoCharacters) {
  setFolder(L"C:\\" + std::wstring(249, L'f'));
  EXPECT_EQ(place(L"quill"), L"C:\\" + std::wstring(249, L'f') + L"\\qu.pdf");
}

TEST_F(PathLengthTest, DropsAFolderWithRoomForLess) {
  setFolder(L"C:\\" + std::wstring(250, L'f'));
  EXPECT_EQ(place(L"quill"), L"C:\\quill.pdf");
}

TEST_F(PathLengthTest, LeavesAFolderWhoseFileFits) {
  setFolder(L"C:\\" + std::wstring(250, L'f'));
  EXPECT_EQ(place(L"qu"), L"C:\\" + std::wstring(250, L'f') + L"\\qu.pdf");
}

TEST_F(PathLengthTest, CutsANameAfterADroppedFolder) {
  setFolder(L"C:\\" + std::wstring(300, L'f'));
  EXPECT_EQ(choose(std::wstring(259, L'n')), L"C:\\" + std::wstring(252, L'n') + L".pdf");
}

// The text of 780 characters has room for 255 of the name; what follows its dot then looks like an extension.
TEST_F(PathLengthTest, HasTheNameCutBeforeItsExtensionIsDropped) {
  setFolder(L"C:\\" + std::wstring(516, L'f'));
  EXPECT_EQ(place(std::wstring(251, L'n') + L".abcdefg"), L"C:\\" + std::wstring(251, L'n') + L".pdf");
}

TEST_F(PathLengthTest, OfAFolderThatLeavesNoRoomForTheDefaultNameIsTheNameAlone) {
  setAction(1);
  setFolder(L"C:\\" + std::wstring(297, L'f'));
  setDefaultName(std::wstring(515, L'n') + L".txt");
  EXPECT_EQ(choose(L""), std::wstring(255, L'n') + L".txt");
}

}  // namespace
}  // namespace quillpress::harness
