// How the name of a document becomes the name of its file.

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

using CleanedNameTest = NamingTest;

class FileNameTest : public NamingTest, public ::testing::WithParamInterface<Name> {};

TEST_P(FileNameTest, IsTheCleanedName) {
  EXPECT_EQ(place(GetParam().document), inFolder(GetParam().file));
}

INSTANTIATE_TEST_SUITE_P(Application, FileNameTest,
                         ::testing::Values(Name{L"Microsoft Word - Report.doc", L"Report.pdf"},
                                           Name{L"one-two-three", L"two-three.pdf"}, Name{L"-x", L"x.pdf"},
                                           Name{L"a -    b", L"b.pdf"}, Name{L"a-\tb", L"_b.pdf"},
                                           Name{L"Word -", L".pdf"}, Name{L"Word -   ", L".pdf"},
                                           Name{L"  x", L"  x.pdf"}));

INSTANTIATE_TEST_SUITE_P(Extension, FileNameTest,
                         ::testing::Values(Name{L"notes.backup", L"notes.backup.pdf"},
                                           Name{L"x.doc", L"x.pdf"}, Name{L"x.docx", L"x.docx.pdf"},
                                           Name{L"x.c", L"x.pdf"}, Name{L"x.", L"x.pdf"},
                                           Name{L"archive.tar.gz", L"archive.tar.pdf"},
                                           Name{L"v1.2.longer", L"v1.2.longer.pdf"},
                                           Name{L".doc", L".doc.pdf"}, Name{L"a.doc", L"a.pdf"},
                                           Name{L"Word - .doc", L".doc.pdf"}, Name{L"x.PDF", L"x.pdf"}));

INSTANTIATE_TEST_SUITE_P(Characters, FileNameTest,
                         ::testing::Values(Name{L"C:\\a/b", L"C__a_b.pdf"},
                                           Name{L"\\ / : * ? \" < > |", L"_ _ _ _ _ _ _ _ _.pdf"},
                                           Name{L"+;='", L"____.pdf"},
                                           Name{L",()[].$`@{}~!#()&_^ x", L",()[].$`@{}~!#()&_^ x.pdf"},
                                           Name{L"\u00C9t\u00E9 \u00D7\u00F7\u00FF\u00C0",
                                                L"\u00C9t\u00E9 \u00D7\u00F7\u00FF\u00C0.pdf"},
                                           Name{L"\u00BF\u0100\u03A9\u2603\u4E2D", L"_____.pdf"},
                                           Name{L"\U0001F600", L"__.pdf"}));

TEST_F(CleanedNameTest, HasEachCharacterAllowedOrReplaced) {
  keepDashes();
  const std::wstring signs = L",()[].$`-@{}~!#()&_^ ";
  for (wchar_t first = 1; first < 0x180; first = static_cast<wchar_t>(first + 64)) {
    std::wstring document = std::to_wstring(first);
    std::wstring expected = document;
    for (wchar_t code = first; code < first + 64; ++code) {
      // It begins an escape.
      if (code == L'%') continue;
      const bool isAllowed = (code >= L'0' && code <= L'9') || (code >= L'A' && code <= L'Z') ||
                             (code >= L'a' && code <= L'z') || (code >= 192 && code <= 255) ||
                             signs.find(code) != std::wstring::npos;
      document += code;
      expected += isAllowed ? code : L'_';
    }
    EXPECT_EQ(place(document), inFolder(expected + L".pdf"));
  }
}

TEST_F(CleanedNameTest, FollowsTheTrimCharacterOfTheSettings) {
  settings.setNumber(L"TrimNameChar", L'_');
  EXPECT_EQ(place(L"Word - a_  b_c"), inFolder(L"b_c.pdf"));
}

TEST_F(CleanedNameTest, IsWholeWithoutTheTrimCharacter) {
  keepDashes();
  EXPECT_EQ(place(L"Word - Report.doc"), inFolder(L"Word - Report.pdf"));
}

TEST_F(CleanedNameTest, MayBeTrimmedAtAnyCharacter) {
  settings.setNumber(L"TrimNameChar", 0x2014);
  EXPECT_EQ(place(L"Word \u2014 Report"), inFolder(L"Report.pdf"));
}

TEST_F(CleanedNameTest, LosesItsExtensionBeforeItIsCleaned) {
  EXPECT_EQ(place(L"a.b:c"), inFolder(L"a.pdf"));
}

}  // namespace
}  // namespace quillpress::harness
