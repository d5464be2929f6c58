#include <gtest/gtest.h>

#include "tools/launcher/LogLine.h"

namespace quillpress::launcher {
namespace {

TEST(LauncherLogLineTest, FieldsAreSeparatedByTabs) {
  EXPECT_EQ(logLine({L"stopprint", L"A printer", LR"(C:\a.pdf)", L"document"}),
            L"stopprint\tA printer\tC:\\a.pdf\tdocument");
  EXPECT_EQ(logLine({L"startprint", L""}), L"startprint\t");
}

TEST(LauncherLogLineTest, ControlCharactersAreShownAsTheirPictures) {
  EXPECT_EQ(logLine({L"a\nb\tc\r\x1b\x7f"}), L"a\u240Ab\u2409c\u240D\u241B\u2421");
}

TEST(LauncherLogLineTest, OtherLineBreaksAreReplaced) {
  EXPECT_EQ(logLine({std::wstring{L'a', wchar_t{0x85}, wchar_t{0x2028}, wchar_t{0x2029}, L'b'}}),
            L"a\uFFFD\uFFFD\uFFFDb");
}

TEST(LauncherLogLineTest, OtherCharactersStay) {
  EXPECT_EQ(logLine({L"\u00C4\u20AC\u00A0 ~"}), L"\u00C4\u20AC\u00A0 ~");
}

}  // namespace
}  // namespace quillpress::launcher
