#include <gtest/gtest.h>

#include "umpd/rules/DocumentName.h"

namespace quillpress::driver {
namespace {

// The code as two hexadecimal digits after "%".
std::wstring escaped(int code) {
  constexpr wchar_t kDigits[] = L"0123456789abcdef";
  return {L'%', kDigits[code / 16], kDigits[code % 16]};
}

TEST(NameCharactersTest, DigitsAndLettersAreAllowed) {
  for (const wchar_t character :
       std::wstring(L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz")) {
    EXPECT_TRUE(isAllowedNameCharacter(character)) << static_cast<int>(character);
  }
}

TEST(NameCharactersTest, TheseSignsAreAllowed) {
  for (const wchar_t character : std::wstring(L",()[].$%`-@{}~!#()&_^ "))
    EXPECT_TRUE(isAllowedNameCharacter(character)) << static_cast<int>(character);
}

TEST(NameCharactersTest, NoOtherAsciiCharacterIs) {
  for (const wchar_t character : std::wstring(L"\"'*+/:;<=>?\\|")) {
    EXPECT_FALSE(isAllowedNameCharacter(character)) << static_cast<int>(character);
  }
  for (wchar_t code = 1; code < L' '; ++code)
    EXPECT_FALSE(isAllowedNameCharacter(code)) << static_cast<int>(code);
  EXPECT_FALSE(isAllowedNameCharacter(127));
}

TEST(NameCharactersTest, TheFinalZeroIsAllowed) {
  EXPECT_TRUE(isAllowedNameCharacter(L'\0'));
}

TEST(NameCharactersTest, AccentedLettersAreAllowed) {
  for (wchar_t code = 192; code <= 255; ++code)
    EXPECT_TRUE(isAllowedNameCharacter(code)) << static_cast<int>(code);
  for (const int code : {128, 160, 191, 256, 257, 0x20AC, 0xFFFF})
    EXPECT_FALSE(isAllowedNameCharacter(static_cast<wchar_t>(code))) << code;
}

TEST(NameCharactersTest, AnEmptyNameStaysEmpty) {
  EXPECT_EQ(decodeDocumentName(L""), L"");
}

TEST(NameCharactersTest, EveryCodeCanBeEscaped) {
  for (int code = 1; code < 256; ++code) {
    const auto character = static_cast<wchar_t>(code);
    const std::wstring expected = {L'a', isAllowedNameCharacter(character) ? character : L'_', L'z'};
    EXPECT_EQ(decodeDocumentName(L"a" + escaped(code) + L"z"), expected) << code;
  }
}

// The view may end before the text behind it does.
TEST(NameCharactersTest, NothingBehindTheEndIsRead) {
  EXPECT_EQ(decodeDocumentName(std::wstring_view(L"abc%41").substr(0, 5)), L"abc_");
  EXPECT_EQ(decodeDocumentName(std::wstring_view(L"abc%41").substr(0, 4)), L"abc%");
}

}  // namespace
}  // namespace quillpress::driver
