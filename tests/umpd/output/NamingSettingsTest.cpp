// The extension, the folder and the default name that a printer's settings give, and how long they may be.

#include <string>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

using ExtensionTest = NamingTest;

TEST_F(ExtensionTest, IsPdfWhenAbsent) {
  EXPECT_EQ(place(L"x"), inFolder(L"x.pdf"));
}

TEST_F(ExtensionTest, IsPdfWhenEmpty) {
  setExtension(L"");
  EXPECT_EQ(place(L"x"), inFolder(L"x.pdf"));
}

TEST_F(ExtensionTest, IsTakenAsItStands) {
  setExtension(L".PostScript");
  EXPECT_EQ(place(L"x.doc"), inFolder(L"x.PostScript"));
  setExtension(L" copy");
  EXPECT_EQ(place(L"x.doc"), inFolder(L"x copy"));
}

TEST_F(ExtensionTest, Of39CharactersIsTaken) {
  const std::wstring extension = L"." + std::wstring(38, L'e');
  setExtension(extension);
  EXPECT_EQ(place(L"x"), inFolder(L"x" + extension));
}

TEST_F(ExtensionTest, Of40CharactersIsPdf) {
  setExtension(L"." + std::wstring(39, L'e'));
  EXPECT_EQ(place(L"x"), inFolder(L"x.pdf"));
}

class FolderTest : public NamingTest {
 protected:
  ~FolderTest() override { DeleteFileW(L"C:\\quill output test.pdf"); }
};

TEST_F(FolderTest, MayEndInABackslash) {
  setFolder(folder.path() + L"\\");
  EXPECT_EQ(place(L"x"), inFolder(L"x.pdf"));
}

TEST_F(FolderTest, MayEndInASlash) {
  setFolder(folder.path() + L"/");
  EXPECT_EQ(place(L"x"), folder.path() + L"/x.pdf");
}

TEST_F(FolderTest, ThatIsAbsentLeavesTheNameAlone) {
  settings.remove(L"DefaultSaveDir");
  EXPECT_EQ(place(L"x"), L"x.pdf");
  EXPECT_TRUE(fileExists(inFolder(L"x.pdf")));
}

TEST_F(FolderTest, ThatIsEmptyLeavesTheNameAlone) {
  setFolder(L"");
  EXPECT_EQ(place(L"x"), L"x.pdf");
}

TEST_F(FolderTest, IsMade) {
  setFolder(inFolder(L"one"));
  EXPECT_EQ(place(L"x"), inFolder(L"one\\x.pdf"));
}

TEST_F(FolderTest, IsMadeWithAllThatItLiesIn) {
  setFolder(inFolder(L"one\\two\\three\\four"));
  EXPECT_EQ(place(L"x"), inFolder(L"one\\two\\three\\four\\x.pdf"));
}

TEST_F(FolderTest, IsMadeWhenItIsWrittenWithSlashes) {
  setFolder(folder.path() + L"/one/two/");
  EXPECT_EQ(place(L"x"), folder.path() + L"/one/two/x.pdf");
  EXPECT_TRUE(fileExists(inFolder(L"one\\two\\x.pdf")));
}

TEST_F(FolderTest, MayLieInTheCurrentOne) {
  setFolder(L"one\\two");
  EXPECT_EQ(place(L"x"), L"one\\two\\x.pdf");
  EXPECT_TRUE(fileExists(inFolder(L"one\\two\\x.pdf")));
}

TEST_F(FolderTest, ThatCannotBeMadeShowsNoBox) {
  setFolder(L"Q:\\no\\such\\drive");
  EXPECT_EQ(choose(L"x"), L"Q:\\no\\such\\drive\\x.pdf");
  EXPECT_TRUE(boxes.take().empty());
}

// It does not fit a path, but it counts as one.
TEST_F(FolderTest, Of519CharactersIsTaken) {
  setFolder(L"C:\\" + std::wstring(516, L'f'));
  EXPECT_EQ(place(L"quill output test"), L"C:\\quill output test.pdf");
}

TEST_F(FolderTest, Of520CharactersIsNone) {
  setFolder(L"C:\\" + std::wstring(517, L'f'));
  EXPECT_EQ(place(L"quill output test"), L"quill output test.pdf");
}

class DefaultNameTest : public NamingTest {
 protected:
  // A text file, and the settings refer to it.
  void refer(const std::string& content) {
    writeFile(inFolder(L"name.txt"), content);
    setDefaultName(L"@" + inFolder(L"name.txt"));
  }
};

TEST_F(DefaultNameTest, Of519CharactersIsTaken) {
  setDefaultName(std::wstring(519, L'n'));
  const std::wstring path = inFolder(L"");
  EXPECT_EQ(choose(L""), path + std::wstring(259 - path.size() - 4, L'n') + L".pdf");
}

TEST_F(DefaultNameTest, Of520CharactersIsNone) {
  setDefaultName(std::wstring(520, L'n'));
  EXPECT_PRED3(isNumbered, place(L""), inFolder(L""), L".pdf");
}

TEST_F(DefaultNameTest, MayComeFromAFile) {
  refer("From the file.doc");
  EXPECT_EQ(place(L""), inFolder(L"From the file.pdf"));
}

TEST_F(DefaultNameTest, MayComeFromAFileUnchanged) {
  setAction(1);
  refer("From - the.file");
  EXPECT_EQ(place(L"document"), inFolder(L"From - the.file"));
}

TEST_F(DefaultNameTest, FromAFileIsItsFirstLine) {
  refer("first\r\nsecond\r\n");
  EXPECT_EQ(place(L""), inFolder(L"first.pdf"));
  refer("unix\nsecond");
  EXPECT_EQ(place(L""), inFolder(L"unix.pdf"));
}

TEST_F(DefaultNameTest, FromAFileLosesBlanksAtItsEndAlone) {
  refer("  a b \t \r\n");
  EXPECT_EQ(place(L""), inFolder(L"  a b.pdf"));
  refer("c\t \t ");
  EXPECT_EQ(place(L""), inFolder(L"c.pdf"));
}

TEST_F(DefaultNameTest, FromAFileIsReadInTheAnsiCodePage) {
  setAction(1);
  refer("caf\xE9 \x80.pdf");
  EXPECT_EQ(place(L""), inFolder(L"caf\u00E9 \u20AC.pdf"));
}

TEST_F(DefaultNameTest, FromAnEmptyFileIsNone) {
  refer("");
  EXPECT_PRED3(isNumbered, place(L""), inFolder(L""), L".pdf");
}

TEST_F(DefaultNameTest, FromAFileWithAnEmptyFirstLineIsNone) {
  refer(" \t\r\nsecond");
  EXPECT_PRED3(isNumbered, place(L""), inFolder(L""), L".pdf");
}

TEST_F(DefaultNameTest, FromAFileIsCutLikeOneOfTheSettings) {
  setAction(1);
  refer(std::string(515, 'n') + ".abcdefgh");
  const std::wstring path = inFolder(L"");
  EXPECT_EQ(choose(L""), path + std::wstring(259 - path.size() - 4, L'n') + L".abc");
}

TEST_F(DefaultNameTest, OfAMissingFileStaysAsItIs) {
  setDefaultName(L"@C:\\no folder\\name.txt");
  EXPECT_EQ(place(L""), inFolder(L"@C__no folder_name.pdf"));
}

TEST_F(DefaultNameTest, ThatRefersToNothingStaysAsItIs) {
  setDefaultName(L"@");
  EXPECT_EQ(place(L""), inFolder(L"@.pdf"));
}

TEST_F(DefaultNameTest, IsReadAnewForEveryJob) {
  refer("one");
  EXPECT_EQ(place(L""), inFolder(L"one.pdf"));
  refer("two");
  EXPECT_EQ(place(L""), inFolder(L"two.pdf"));
}

TEST_F(DefaultNameTest, IsNotNeededForADocumentWithAName) {
  refer("From the file");
  EXPECT_EQ(place(L"document"), inFolder(L"document.pdf"));
}

}  // namespace
}  // namespace quillpress::harness
