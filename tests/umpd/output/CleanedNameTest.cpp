// How the name of a document becomes the name of its file.

#include <string>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

using CleanedNameTest = NamingTest;

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

}  // namespace
}  // namespace quillpress::harness
