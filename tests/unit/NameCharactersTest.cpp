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

TEST(NameCharactersTest, DecodingCopiesMostCharacters) {
  EXPECT_EQ(decodeDocumentName(L""), L"");
  EXPECT_EQ(decodeDocumentName(L"Report.doc"), L"Report.doc");
  // Only what an escape yields is looked at.
  EXPECT_EQ(decodeDocumentName(L"C:\\a/b?*\x20AC"), L"C:\\a/b?*\x20AC");
}

TEST(NameCharactersTest, APlusSignIsABlank) {
  EXPECT_EQ(decodeDocumentName(L"a+b++"), L"a b  ");
}

TEST(NameCharactersTest, AnEscapeIsItsCharacterIfThatIsAllowed) {
  EXPECT_EQ(decodeDocumentName(L"a+b%41"), L"a bA");
  EXPECT_EQ(decodeDocumentName(L"%41%42c"), L"ABc");
  EXPECT_EQ(decodeDocumentName(L"a%20b"), L"a b");
  EXPECT_EQ(decodeDocumentName(L"%e4%E4"), L"\x00E4\x00E4");
  EXPECT_EQ(decodeDocumentName(L"100%25"), L"100%");
}

TEST(NameCharactersTest, AnyOtherEscapeIsAnUnderscore) {
  EXPECT_EQ(decodeDocumentName(L"%3A"), L"_");
  EXPECT_EQ(decodeDocumentName(L"C%3a%5Cx"), L"C__x");
  EXPECT_EQ(decodeDocumentName(L"%2B"), L"_");
  EXPECT_EQ(decodeDocumentName(L"%0a"), L"_");
  EXPECT_EQ(decodeDocumentName(L"%BF"), L"_");
  EXPECT_EQ(decodeDocumentName(L"%C0"), L"\x00C0");
  EXPECT_EQ(decodeDocumentName(L"%ff"), L"\x00FF");
}

TEST(NameCharactersTest, EveryCodeCanBeEscaped) {
  for (int code = 1; code < 256; ++code) {
    const auto character = static_cast<wchar_t>(code);
    const std::wstring expected = {L'a', isAllowedNameCharacter(character) ? character : L'_', L'z'};
    EXPECT_EQ(decodeDocumentName(L"a" + escaped(code) + L"z"), expected) << code;
  }
}

TEST(NameCharactersTest, APercentSignBeforeAnotherIsCopied) {
  EXPECT_EQ(decodeDocumentName(L"%%"), L"%%");
  EXPECT_EQ(decodeDocumentName(L"%%41"), L"%A");
  EXPECT_EQ(decodeDocumentName(L"%%%41"), L"%%A");
  EXPECT_EQ(decodeDocumentName(L"a%%"), L"a%%");
}

TEST(NameCharactersTest, APercentSignAtTheEndIsCopied) {
  EXPECT_EQ(decodeDocumentName(L"%"), L"%");
  EXPECT_EQ(decodeDocumentName(L"100%"), L"100%");
}

TEST(NameCharactersTest, DigitsAreReadAsFarAsTheyGo) {
  EXPECT_EQ(decodeDocumentName(L"%4gx"), L"_x");
  EXPECT_EQ(decodeDocumentName(L"%4%41"), L"_41");
  EXPECT_EQ(decodeDocumentName(L"a%f+b"), L"a_b");
}

TEST(NameCharactersTest, AnEscapeCutByTheEndIsReadTheSameWay) {
  EXPECT_EQ(decodeDocumentName(L"%4"), L"_");
  EXPECT_EQ(decodeDocumentName(L"abc%f"), L"abc_");
  EXPECT_EQ(decodeDocumentName(L"abc%z"), L"abc");
}

// The view may end before the text behind it does.
TEST(NameCharactersTest, NothingBehindTheEndIsRead) {
  EXPECT_EQ(decodeDocumentName(std::wstring_view(L"abc%41").substr(0, 5)), L"abc_");
  EXPECT_EQ(decodeDocumentName(std::wstring_view(L"abc%41").substr(0, 4)), L"abc%");
}

TEST(NameCharactersTest, AnEscapeWithoutDigitsEndsTheName) {
  EXPECT_EQ(decodeDocumentName(L"abc%zzdef"), L"abc");
  EXPECT_EQ(decodeDocumentName(L"abc%g1def"), L"abc");
  EXPECT_EQ(decodeDocumentName(L"abc% 4def"), L"abc");
  EXPECT_EQ(decodeDocumentName(L"abc%+4def"), L"abc");
  EXPECT_EQ(decodeDocumentName(L"%zz"), L"");
}

TEST(NameCharactersTest, SoDoesTheEscapeOfZero) {
  EXPECT_EQ(decodeDocumentName(L"abc%00def"), L"abc");
  EXPECT_EQ(decodeDocumentName(L"abc%0"), L"abc");
  EXPECT_EQ(decodeDocumentName(L"abc%0xdef"), L"abc");
}

}  // namespace
}  // namespace quillpress::driver
