// The saved-name policy: where the name of an output file comes from.

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

class ActionTest : public NamingTest {
 protected:
  ActionTest() { setDefaultName(L"default.txt"); }
};

class DocumentActionTest : public ActionTest, public ::testing::WithParamInterface<DWORD> {
 protected:
  DocumentActionTest() { setAction(GetParam()); }
};

TEST_P(DocumentActionTest, TakesTheDocumentsName) {
  EXPECT_EQ(place(L"My file.doc"), inFolder(L"My file.pdf"));
}

TEST_P(DocumentActionTest, TakesTheDefaultNameForANamelessDocument) {
  EXPECT_EQ(place(L""), inFolder(L"default.pdf"));
}

TEST_P(DocumentActionTest, CleansTheDefaultNameLikeADocuments) {
  setDefaultName(L"Printed - a:b.doc");
  EXPECT_EQ(place(L""), inFolder(L"a_b.pdf"));
}

TEST_P(DocumentActionTest, TakesANumberWithoutAnyName) {
  setDefaultName(L"");
  EXPECT_PRED3(isNumbered, place(L""), inFolder(L""), L".pdf");
}

INSTANTIATE_TEST_SUITE_P(Actions, DocumentActionTest, ::testing::Values(0, 2, 3, 5));

TEST_F(ActionTest, ThatIsAbsentTakesTheDocumentsName) {
  EXPECT_EQ(place(L"name"), inFolder(L"name.pdf"));
}

TEST_F(ActionTest, OneTakesTheDefaultNameUnchanged) {
  setAction(1);
  setDefaultName(L"Word - Report.longer");
  EXPECT_EQ(place(L"document"), inFolder(L"Word - Report.longer"));
}

TEST_F(ActionTest, OneMayNameAFolderToo) {
  setAction(1);
  setDefaultName(L"below\\and/further\\file.txt");
  EXPECT_EQ(place(L"document"), inFolder(L"below\\and/further\\file.txt"));
}

// No file can be created there, which the first block feels.
TEST_F(ActionTest, OneWithoutADefaultNameChoosesTheFolder) {
  setAction(1);
  setDefaultName(L"");
  EXPECT_EQ(choose(L"document"), inFolder(L""));
}

TEST_F(ActionTest, FourTakesANumber) {
  setAction(4);
  EXPECT_PRED3(isNumbered, place(L"document"), inFolder(L""), L".pdf");
}

TEST_F(ActionTest, FourTakesTheDefaultExtension) {
  setAction(4);
  setExtension(L".ps");
  EXPECT_PRED3(isNumbered, place(L"document"), inFolder(L""), L".ps");
}

class FolderActionTest : public ActionTest, public ::testing::WithParamInterface<DWORD> {
 protected:
  FolderActionTest() { setAction(GetParam()); }
};

TEST_P(FolderActionTest, ChoosesTheFolder) {
  EXPECT_EQ(choose(L"document"), inFolder(L""));
}

TEST_P(FolderActionTest, DoesNotNumberAFolderWithADot) {
  setFolder(inFolder(L"out.put"));
  EXPECT_EQ(choose(L"document"), inFolder(L"out.put\\"));
}

TEST_P(FolderActionTest, NumbersAFileInTheFoldersPlace) {
  // The escape without digits takes the separator away.
  setFolder(inFolder(L"out.put%zz"));
  writeFile(inFolder(L"out.put"), "older");
  EXPECT_PRED3(isNumbered, place(L"document"), inFolder(L"out."), L".pdf");
}

// All above 5.
INSTANTIATE_TEST_SUITE_P(Actions, FolderActionTest, ::testing::Values(6, 100, 0x7FFFFFFF));

TEST_F(ActionTest, BelowZeroKeepsTheFolderAsThePath) {
  settings.setText(L"SaveFilenameAction", L"-1");
  EXPECT_EQ(choose(L"document"), inFolder(L""));
}

}  // namespace
}  // namespace quillpress::harness
