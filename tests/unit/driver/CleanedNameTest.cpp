#include <gtest/gtest.h>

#include "umpd/rules/DocumentName.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kMuchRoom = 780;

TEST(CleanedNameTest, OfNothingIsTheExtension) {
  EXPECT_EQ(cleanedName(L"", L'-', L".pdf", kMuchRoom), L".pdf");
  EXPECT_EQ(cleanedName(L"a.doc", L'-', L"", kMuchRoom), L"a");
}

TEST(CleanedNameTest, ZeroIsNoTrimCharacter) {
  EXPECT_EQ(cleanedName(L"Word - Report", L'\0', L".pdf", kMuchRoom), L"Word - Report.pdf");
}

TEST(CleanedNameTest, IsCutToTheRoom) {
  EXPECT_EQ(cleanedName(L"abcdef", L'-', L".pdf", 11), L"abcdef.pdf");
  EXPECT_EQ(cleanedName(L"abcdef", L'-', L".pdf", 10), L"abcde.pdf");
  EXPECT_EQ(cleanedName(L"abcdef", L'-', L".pdf", 6), L"a.pdf");
  EXPECT_EQ(cleanedName(L"abcdef", L'-', L".pdf", 5), L".pdf");
}

TEST(CleanedNameTest, WithoutRoomOnlyTheExtensionIsLeft) {
  for (const std::size_t room : {4U, 1U, 0U}) EXPECT_EQ(cleanedName(L"abcdef", L'-', L".pdf", room), L".pdf");
}

TEST(CleanedNameTest, IsCutBeforeItsExtensionIsLookedFor) {
  // "ab.c" is left, and its ending is short.
  EXPECT_EQ(cleanedName(L"ab.cdefgh", L'-', L".pdf", 9), L"ab.pdf");
  // "ab.cdef" is left, and its ending is long.
  EXPECT_EQ(cleanedName(L"ab.cdefgh", L'-', L".pdf", 12), L"ab.cdef.pdf");
}

TEST(CleanedNameTest, TheApplicationsPartIsNotCounted) {
  EXPECT_EQ(cleanedName(L"A long application - abc", L'-', L".pdf", 8), L"abc.pdf");
}

}  // namespace
}  // namespace quillpress::driver
