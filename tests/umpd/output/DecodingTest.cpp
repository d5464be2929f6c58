// Escapes in the path of an output file.

#include <string>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

using DecodingTest = NamingTest;

using DecodedFileNameTest = NamedFileTest;

TEST_P(DecodedFileNameTest, IsOnDisk) {
  EXPECT_EQ(place(GetParam().document), inFolder(GetParam().file));
}

INSTANTIATE_TEST_SUITE_P(Names, DecodedFileNameTest,
                         ::testing::Values(NamedFile{L"%41b", L"Ab.pdf"}, NamedFile{L"a%20b", L"a b.pdf"},
                                           NamedFile{L"a%3Ab", L"a_b.pdf"}, NamedFile{L"a%5Cb", L"a_b.pdf"},
                                           NamedFile{L"100%25", L"100%.pdf"}, NamedFile{L"%%41", L"%A.pdf"},
                                           NamedFile{L"a%4gb", L"a_b.pdf"},
                                           NamedFile{L"caf%E9", L"caf\u00E9.pdf"}));

// Cleaning comes first, and leaves nothing of them.
INSTANTIATE_TEST_SUITE_P(Plus, DecodedFileNameTest, ::testing::Values(NamedFile{L"a+b", L"a_b.pdf"}));

// The extension is a part of the path by then: a dot is no digit.
INSTANTIATE_TEST_SUITE_P(Zero, DecodedFileNameTest,
                         ::testing::Values(NamedFile{L"a%zzb", L"a"}, NamedFile{L"a%", L"a"},
                                           NamedFile{L"a%00b", L"a"}));

TEST_F(DecodingTest, CoversTheFolder) {
  setFolder(inFolder(L"one+two%41"));
  EXPECT_EQ(place(L"x"), inFolder(L"one twoA\\x.pdf"));
}

TEST_F(DecodingTest, CoversTheDefaultName) {
  setAction(1);
  setDefaultName(L"a+b%2ec");
  EXPECT_EQ(place(L"x"), inFolder(L"a b.c"));
}

TEST_F(DecodingTest, CoversTheExtension) {
  setExtension(L".a+b");
  EXPECT_EQ(place(L"x"), inFolder(L"x.a b"));
}

TEST_F(DecodingTest, LeavesSlashesOfTheFolderAlone) {
  setFolder(folder.path() + L"/one\\two");
  EXPECT_EQ(place(L"x"), folder.path() + L"/one\\two\\x.pdf");
}

TEST_F(DecodingTest, ThatLeavesAnotherFileInTheWayHasNoPath) {
  writeFile(inFolder(L"a"), "older");
  expectNoPath(L"a%zzb");
  EXPECT_EQ(readFile(inFolder(L"a")), "older");
}

}  // namespace
}  // namespace quillpress::harness
