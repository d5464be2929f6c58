// What becomes of a document's name on its way to whoever takes the file.

#include <cstdio>
#include <ostream>
#include <string>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

struct Name {
  const wchar_t* given;
  const wchar_t* told;
};

std::ostream& operator<<(std::ostream& out, const Name& name) {
  return out << narrow(name.given);
}

class DocumentNameTest : public JobTest {
 protected:
  DocumentNameTest() {
    // The file has a name of its own.
    settings.setNumber(L"SaveFilenameAction", 1);
    settings.setText(L"DefaultSaveFilename", L"file.pdf");
  }

  std::wstring told(const std::wstring& name) {
    EXPECT_EQ(print(name), 1);
    return lastName().value_or(L"none");
  }
};

class DecodedNameTest : public DocumentNameTest, public ::testing::WithParamInterface<Name> {};

TEST_P(DecodedNameTest, IsTold) {
  EXPECT_EQ(told(GetParam().given), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(Plain, DecodedNameTest,
                         ::testing::Values(Name{L"Document", L"Document"}, Name{L"a b", L"a b"},
                                           Name{L"a:b\\c/d*?\"<>|", L"a:b\\c/d*?\"<>|"},
                                           Name{L"\u03A9\u2603 \u4E2D", L"\u03A9\u2603 \u4E2D"},
                                           Name{L"\tx", L"\tx"}));

INSTANTIATE_TEST_SUITE_P(Plus, DecodedNameTest,
                         ::testing::Values(Name{L"a+b%41", L"a bA"}, Name{L"+", L" "}, Name{L"++x", L"  x"}));

INSTANTIATE_TEST_SUITE_P(Escape, DecodedNameTest,
                         ::testing::Values(Name{L"%41%62%30", L"Ab0"}, Name{L"%4a%4A", L"JJ"},
                                           Name{L"%20", L" "}, Name{L"%e9%C0%fF", L"\u00E9\u00C0\u00FF"},
                                           Name{L"%2541", L"%41"}, Name{L"%411", L"A1"}));

INSTANTIATE_TEST_SUITE_P(EscapeOfAForbiddenCharacter, DecodedNameTest,
                         ::testing::Values(Name{L"%3A", L"_"}, Name{L"a%5Cb%2Fc", L"a_b_c"},
                                           Name{L"%2B", L"_"}, Name{L"%BF", L"_"}, Name{L"%0A", L"_"}));

INSTANTIATE_TEST_SUITE_P(PercentBeforePercent, DecodedNameTest,
                         ::testing::Values(Name{L"%%41", L"%A"}, Name{L"%%", L"%%"}, Name{L"%%%41", L"%%A"},
                                           Name{L"%%x", L"%"}));

INSTANTIATE_TEST_SUITE_P(PercentAtTheEnd, DecodedNameTest,
                         ::testing::Values(Name{L"50%", L"50%"}, Name{L"%", L"%"}));

INSTANTIATE_TEST_SUITE_P(EscapeWithOneDigit, DecodedNameTest,
                         ::testing::Values(Name{L"%4gx", L"_x"}, Name{L"%4", L"_"}, Name{L"x%4", L"x_"}));

INSTANTIATE_TEST_SUITE_P(EscapeOfZeroEndsTheName, DecodedNameTest,
                         ::testing::Values(Name{L"%zz", L""}, Name{L"ab%zzcd", L"ab"}, Name{L"a%g1b", L"a"},
                                           Name{L"a%00b", L"a"}, Name{L"a%z", L"a"}, Name{L"a%0", L"a"}));

TEST_F(DocumentNameTest, HasEachEscapeDecoded) {
  const std::wstring signs = L",()[].$%`-@{}~!#()&_^ ";
  std::wstring given;
  std::wstring expected;
  for (wchar_t code = 1; code <= 255; ++code) {
    const bool isAllowed = (code >= L'0' && code <= L'9') || (code >= L'A' && code <= L'Z') ||
                           (code >= L'a' && code <= L'z') || code >= 192 ||
                           signs.find(code) != std::wstring::npos;
    char escape[4];
    std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(code));
    given += widen(escape);
    expected += isAllowed ? code : L'_';
    // A name has room for 86 escapes.
    if (given.size() < 250 && code < 255) continue;
    EXPECT_EQ(told(given), expected);
    given.clear();
    expected.clear();
  }
}

TEST_F(DocumentNameTest, Of259CharactersIsToldWhole) {
  EXPECT_EQ(told(std::wstring(258, L'n') + L'z'), std::wstring(258, L'n') + L'z');
}

TEST_F(DocumentNameTest, Of260CharactersIsCut) {
  EXPECT_EQ(told(std::wstring(259, L'n') + L'z'), std::wstring(259, L'n'));
}

TEST_F(DocumentNameTest, Of300CharactersIsCut) {
  EXPECT_EQ(told(std::wstring(300, L'n')), std::wstring(259, L'n'));
}

TEST_F(DocumentNameTest, IsCutBeforeItIsDecoded) {
  EXPECT_EQ(told(std::wstring(257, L'n') + L"%41"), std::wstring(257, L'n') + L"_");
}

TEST_F(DocumentNameTest, MayBeEmpty) {
  EXPECT_EQ(told(L""), L"");
}

}  // namespace
}  // namespace quillpress::harness
