// Characters that mean something in XML.

#include "tests/umpd/metadata/MetadataTest.h"

namespace quillpress::harness {
namespace {

class EscapeTest : public MetadataTest {
 protected:
  std::wstring titleOf(const std::wstring& text) {
    settings.setNumber(L"DocInfoEnable", 1);
    settings.setText(L"DocInfoTitle", text);
    return title();
  }
};

TEST_F(EscapeTest, EveryControlCharacterBecomesAHexadecimalReferenceInLowerCase) {
  std::wstring controls;
  for (wchar_t character = 1; character < 32; ++character) controls += character;
  EXPECT_EQ(
      titleOf(L"<" + controls + L">"),
      L"&lt;&#x1;&#x2;&#x3;&#x4;&#x5;&#x6;&#x7;&#x8;&#x9;&#xa;&#xb;&#xc;&#xd;&#xe;&#xf;"
      L"&#x10;&#x11;&#x12;&#x13;&#x14;&#x15;&#x16;&#x17;&#x18;&#x19;&#x1a;&#x1b;&#x1c;&#x1d;&#x1e;&#x1f;"
      L"&gt;");
}

TEST_F(EscapeTest, OtherCharactersOfAsciiStandForThemselves) {
  std::wstring text;
  for (wchar_t character = 32; character < 128; ++character) {
    if (std::wstring(L"\"&'<>").find(character) == std::wstring::npos) text += character;
  }
  EXPECT_EQ(titleOf(text), text);
}

TEST_F(EscapeTest, AuthorSubjectAndKeywordsAreEscapedAlike) {
  settings.setNumber(L"DocInfoEnable", 1);
  settings.setText(L"DocInfoTitle", L"T");
  settings.setText(L"DocInfoAuthor", L"A <a&b>\n");
  settings.setText(L"DocInfoSubject", L"'S' \"s\"\r");
  settings.setText(L"DocInfoKeywords", L"k'><k & \t");
  EXPECT_EQ(packet(), packetWith(L"pdf:Producer='Quillpress'\n"
                                 L"pdf:Keywords='k&apos;&gt;&lt;k &amp; &#x9;'\n",
                                 dublinCore(titleElement(L"T") + creatorElement(L"A &lt;a&amp;b&gt;&#xa;") +
                                            descriptionElement(L"&apos;S&apos; &quot;s&quot;&#xd;"))));
}

}  // namespace
}  // namespace quillpress::harness
