// Escapes in the path of an output file.

#include <ostream>
#include <string>

#include "output/NamingTest.h"

namespace quillpress::harness {
namespace {

struct Name {
  const wchar_t* document;
  const wchar_t* file;
};

std::ostream& operator<<(std::ostream& out, const Name& name) {
  return out << narrow(name.document);
}

using DecodingTest = NamingTest;

class DecodedFileNameTest : public NamingTest, public ::testing::WithParamInterface<Name> {};

TEST_P(DecodedFileNameTest, IsOnDisk) {
  EXPECT_EQ(place(GetParam().document), inFolder(GetParam().file));
}

INSTANTIATE_TEST_SUITE_P(Names, DecodedFileNameTest,
                         ::testing::Values(Name{L"%41b", L"Ab.pdf"}, Name{L"a%20b", L"a b.pdf"},
                                           Name{L"a%3Ab", L"a_b.pdf"}, Name{L"a%5Cb", L"a_b.pdf"},
                                           Name{L"100%25", L"100%.pdf"}, Name{L"%%41", L"%A.pdf"},
                                           Name{L"a%4gb", L"a_b.pdf"}, Name{L"caf%E9", L"caf\u00E9.pdf"}));

// Cleaning comes first, and leaves nothing of them.
INSTANTIATE_TEST_SUITE_P(Plus, DecodedFileNameTest, ::testing::Values(Name{L"a+b", L"a_b.pdf"}));

// The extension is a part of the path by then: a dot is no digit.
INSTANTIATE_TEST_SUITE_P(Zero, DecodedFileNameTest,
                         ::testing::Values(Name{L"a%zzb", L"a"}, Name{L"a%", L"a"}, Name{L"a%00b", L"a"}));

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
