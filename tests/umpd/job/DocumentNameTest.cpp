// What becomes of a document's name on its way to whoever takes the file.

#include <cstdio>
#include <ostream>
#include <string>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

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
