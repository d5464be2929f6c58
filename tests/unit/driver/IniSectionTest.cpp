#include <gtest/gtest.h>

#include <string>

#include "umpd/rules/SettingText.h"

namespace quillpress::driver {
namespace {

// The lines as NAME->VALUE, each ended by a semicolon. `lines` end where the system's texts have zeros.
std::wstring parsed(std::wstring lines) {
  for (wchar_t& character : lines) {
    if (character == L'\n') character = L'\0';
  }
  std::wstring result;
  for (const IniLine& line : parseIniSection(lines))
    result.append(line.name).append(L"->").append(line.value).append(L";");
  return result;
}

TEST(IniSectionTest, ReadsLineAfterLine) {
  EXPECT_EQ(parsed(L"imageDPI=600\nwatermark=Draft\n"), L"imageDPI->600;watermark->Draft;");
}

TEST(IniSectionTest, TheLastLineNeedsNoZero) {
  EXPECT_EQ(parsed(L"a=1\nb=2"), L"a->1;b->2;");
}

TEST(IniSectionTest, AnEmptySectionHasNoLines) {
  EXPECT_EQ(parsed(L""), L"");
  EXPECT_EQ(parsed(L"\n"), L"");
}

TEST(IniSectionTest, SkipsLinesWithoutEqualsSign) {
  EXPECT_EQ(parsed(L"first\na=1\n; remark\nb=2\n"), L"a->1;b->2;");
}

TEST(IniSectionTest, SkipsLinesWithoutValue) {
  EXPECT_EQ(parsed(L"empty=\na=1\n"), L"a->1;");
}

TEST(IniSectionTest, SkipsLinesWithoutName) {
  EXPECT_EQ(parsed(L"=1\n=\na=1\n"), L"a->1;");
}

TEST(IniSectionTest, SkipsEmptyLines) {
  EXPECT_EQ(parsed(L"a=1\n\n\nb=2\n"), L"a->1;b->2;");
}

TEST(IniSectionTest, TheFirstEqualsSignDivides) {
  EXPECT_EQ(parsed(L"ExecCmdLine=view -nav=\"%s\"\na==\n"), L"ExecCmdLine->view -nav=\"%s\";a->=;");
}

// What the system has left of the blanks belongs to the texts.
TEST(IniSectionTest, KeepsBlanks) {
  EXPECT_EQ(parsed(L"a b = c d\n"), L"a b -> c d;");
}

TEST(IniSectionTest, KeepsLinesOfEqualNames) {
  EXPECT_EQ(parsed(L"a=1\nA=2\na=3\n"), L"a->1;A->2;a->3;");
}

}  // namespace
}  // namespace quillpress::driver
