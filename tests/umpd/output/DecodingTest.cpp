// Escapes in the path of an output file.

#include <string>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

using DecodingTest = NamingTest;

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
