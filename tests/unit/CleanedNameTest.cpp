#include <gtest/gtest.h>

#include "umpd/rules/DocumentName.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kMuchRoom = 780;

std::wstring cleaned(std::wstring_view name) {
  return cleanedName(name, L'-', L".pdf", kMuchRoom);
}

TEST(CleanedNameTest, DropsWhatAnApplicationPutsInFront) {
  EXPECT_EQ(cleaned(L"Microsoft Word - Report.doc"), L"Report.pdf");
  EXPECT_EQ(cleaned(L"Word-Report"), L"Report.pdf");
  EXPECT_EQ(cleaned(L"-Report"), L"Report.pdf");
  EXPECT_EQ(cleaned(L"Word -    Report"), L"Report.pdf");
}

TEST(CleanedNameTest, OnlyTheFirstTrimCharacterDivides) {
  EXPECT_EQ(cleaned(L"Word - Report - 2nd"), L"Report - 2nd.pdf");
  EXPECT_EQ(cleaned(L"Word -- Report"), L"- Report.pdf");
}

TEST(CleanedNameTest, OnlySpacesAreDroppedBehindIt) {
  EXPECT_EQ(cleaned(L"Word - \tReport"), L"_Report.pdf");
}

TEST(CleanedNameTest, NothingMayBeLeft) {
  EXPECT_EQ(cleaned(L"Word -"), L".pdf");
  EXPECT_EQ(cleaned(L"Word -   "), L".pdf");
  EXPECT_EQ(cleaned(L""), L".pdf");
}

TEST(CleanedNameTest, WithoutTheTrimCharacterTheNameStaysWhole) {
  EXPECT_EQ(cleaned(L"  Report"), L"  Report.pdf");
  EXPECT_EQ(cleanedName(L"Word - Report", L'#', L".pdf", kMuchRoom), L"Word - Report.pdf");
  EXPECT_EQ(cleanedName(L"Word - Report", L'\0', L".pdf", kMuchRoom), L"Word - Report.pdf");
}

TEST(CleanedNameTest, TheTrimCharacterCanBeAnyOther) {
  EXPECT_EQ(cleanedName(L"App: a-b", L':', L".pdf", kMuchRoom), L"a-b.pdf");
}

TEST(CleanedNameTest, DropsAShortExtension) {
  EXPECT_EQ(cleaned(L"a.doc"), L"a.pdf");
  EXPECT_EQ(cleaned(L"a.c"), L"a.pdf");
  EXPECT_EQ(cleaned(L"a."), L"a.pdf");
  EXPECT_EQ(cleaned(L"a.b.c"), L"a.b.pdf");
}

TEST(CleanedNameTest, KeepsALongExtension) {
  EXPECT_EQ(cleaned(L"notes.backup"), L"notes.backup.pdf");
  EXPECT_EQ(cleaned(L"page.html"), L"page.html.pdf");
  EXPECT_EQ(cleaned(L"a.doc.backup"), L"a.doc.backup.pdf");
}

TEST(CleanedNameTest, ADotInFrontBelongsToTheName) {
  EXPECT_EQ(cleaned(L".doc"), L".doc.pdf");
  EXPECT_EQ(cleaned(L"."), L"..pdf");
  EXPECT_EQ(cleaned(L".."), L"..pdf");
  EXPECT_EQ(cleaned(L".a.b"), L".a.pdf");
}

TEST(CleanedNameTest, ReplacesWhatIsNotAllowed) {
  EXPECT_EQ(cleaned(L"a:b/c\\d*e"), L"a_b_c_d_e.pdf");
  EXPECT_EQ(cleaned(L"10% [of] {it}"), L"10% [of] {it}.pdf");
  EXPECT_EQ(cleaned(L"\x00C4\x00E4\x20AC\x00BF"), L"\x00C4\x00E4__.pdf");
  EXPECT_EQ(cleaned(L"a+b"), L"a_b.pdf");
}

// The extension is the administrator's own.
TEST(CleanedNameTest, TheDefaultExtensionIsAppendedAsItIs) {
  EXPECT_EQ(cleanedName(L"a.doc", L'-', L"", kMuchRoom), L"a");
  EXPECT_EQ(cleanedName(L"a.doc", L'-', L".x:y", kMuchRoom), L"a.x:y");
  EXPECT_EQ(cleanedName(L"a.doc", L'-', L"pdf", kMuchRoom), L"apdf");
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
