#include <gtest/gtest.h>

#include "umpd/rules/XmpPacket.h"

namespace quillpress::driver {
namespace {

TEST(XmlEscapeTest, AnEmptyTextStaysEmpty) {
  EXPECT_EQ(xmlEscape(L""), L"");
  EXPECT_EQ(xmlEscape({}), L"");
}

TEST(XmlEscapeTest, ControlCodesAreHexadecimalReferences) {
  const wchar_t* const references[32] = {
      L"&#x0;",  L"&#x1;",  L"&#x2;",  L"&#x3;",  L"&#x4;",  L"&#x5;",  L"&#x6;",  L"&#x7;",
      L"&#x8;",  L"&#x9;",  L"&#xa;",  L"&#xb;",  L"&#xc;",  L"&#xd;",  L"&#xe;",  L"&#xf;",
      L"&#x10;", L"&#x11;", L"&#x12;", L"&#x13;", L"&#x14;", L"&#x15;", L"&#x16;", L"&#x17;",
      L"&#x18;", L"&#x19;", L"&#x1a;", L"&#x1b;", L"&#x1c;", L"&#x1d;", L"&#x1e;", L"&#x1f;",
  };
  for (int code = 0; code < 32; ++code) {
    EXPECT_EQ(xmlEscape(std::wstring(1, static_cast<wchar_t>(code))), references[code]) << code;
  }
}

TEST(XmlEscapeTest, OtherAsciiCharactersAreCopied) {
  constexpr std::wstring_view kEscaped = L"\"&'<>";
  for (wchar_t code = 32; code < 128; ++code) {
    if (kEscaped.find(code) != std::wstring_view::npos) continue;
    EXPECT_EQ(xmlEscape(std::wstring(1, code)), std::wstring(1, code)) << static_cast<int>(code);
  }
}

}  // namespace
}  // namespace quillpress::driver
