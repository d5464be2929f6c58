// How the name of a document becomes the name of its file.

#include <string>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

using CleanedNameTest = NamingTest;

using FileNameTest = NamedFileTest;

TEST_P(FileNameTest, IsTheCleanedName) {
  EXPECT_EQ(place(GetParam().document), inFolder(GetParam().file));
}

INSTANTIATE_TEST_SUITE_P(Application, FileNameTest,
                         ::testing::Values(NamedFile{L"Microsoft Word - Report.doc", L"Report.pdf"},
                                           NamedFile{L"one-two-three", L"two-three.pdf"},
                                           NamedFile{L"-x", L"x.pdf"}, NamedFile{L"a -    b", L"b.pdf"},
                                           NamedFile{L"a-\tb", L"_b.pdf"}, NamedFile{L"Word -", L".pdf"},
                                           NamedFile{L"Word -   ", L".pdf"}, NamedFile{L"  x", L"  x.pdf"}));

INSTANTIATE_TEST_SUITE_P(Extension, FileNameTest,
                         ::testing::Values(NamedFile{L"notes.backup", L"notes.backup.pdf"},
                                           NamedFile{L"x.doc", L"x.pdf"}, NamedFile{L"x.docx", L"x.docx.pdf"},
                                           NamedFile{L"x.c", L"x.pdf"}, NamedFile{L"x.", L"x.pdf"},
                                           NamedFile{L"archive.tar.gz", L"archive.tar.pdf"},
                                           NamedFile{L"v1.2.longer", L"v1.2.longer.pdf"},
                                           NamedFile{L".doc", L".doc.pdf"}, NamedFile{L"a.doc", L"a.pdf"},
                                           NamedFile{L"Word - .doc", L".doc.pdf"},
                                           NamedFile{L"x.PDF", L"x.pdf"}));

INSTANTIATE_TEST_SUITE_P(Characters, FileNameTest,
                         ::testing::Values(NamedFile{L"C:\\a/b", L"C__a_b.pdf"},
                                           NamedFile{L"\\ / : * ? \" < > |", L"_ _ _ _ _ _ _ _ _.pdf"},
                                           NamedFile{L"+;='", L"____.pdf"},
                                           NamedFile{L",()[].$`@{}~!#()&_^ x", L",()[].$`@{}~!#()&_^ x.pdf"},
                                           NamedFile{L"\u00C9t\u00E9 \u00D7\u00F7\u00FF\u00C0",
                                                     L"\u00C9t\u00E9 \u00D7\u00F7\u00FF\u00C0.pdf"},
                                           NamedFile{L"\u00BF\u0100\u03A9\u2603\u4E2D", L"_____.pdf"},
                                           NamedFile{L"\U0001F600", L"__.pdf"}));

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
