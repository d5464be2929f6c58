#include <gtest/gtest.h>

#include "umpd/rules/SettingText.h"

namespace quillpress::driver {
namespace {

using Settings = std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>;

std::wstring textOf(const Settings& settings) {
  StringMap map;
  for (const auto& [name, value] : settings) EXPECT_TRUE(map.set(name, value));
  return driverConfigText(map);
}

TEST(DriverConfigTextTest, OfNoSettingsIsEmpty) {
  EXPECT_EQ(textOf({}), L"");
}

TEST(DriverConfigTextTest, HoldsTheNineWantedSettings) {
  for (const std::wstring name :
       {L"resolution", L"PrinterData4", L"pdfTemplate", L"pdfTemplateOnTop", L"imageDPI", L"jpegImageQuality",
        L"watermarkFontName", L"watermark", L"watermarkFontSize"}) {
    EXPECT_EQ(textOf({{name.c_str(), L"v"}}), name + L"=v&");
  }
}

TEST(DriverConfigTextTest, LeavesOutAllOthers) {
  EXPECT_EQ(
      textOf({{L"passthru", L"1"}, {L"resIndex", L"3"}, {L"watermarkFont", L"x"}, {L"resolutions", L"1"}}),
      L"");
}

TEST(DriverConfigTextTest, FollowsTheOrderOfTheMap) {
  EXPECT_EQ(
      textOf({{L"watermark", L"Draft"}, {L"DocName", L"d"}, {L"imageDPI", L"300"}, {L"resolution", L"600"}}),
      L"watermark=Draft&imageDPI=300&resolution=600&");
}

TEST(DriverConfigTextTest, TheCaseOfNamesCounts) {
  EXPECT_EQ(textOf({{L"printerdata4", L"1"}, {L"Resolution", L"300"}, {L"ImageDPI", L"300"}}), L"");
}

TEST(DriverConfigTextTest, SkipsEmptyValues) {
  EXPECT_EQ(textOf({{L"watermark", L""}, {L"imageDPI", L"300"}}), L"imageDPI=300&");
}

// The rendering side reads it as it stands.
TEST(DriverConfigTextTest, ValuesAreNotEscaped) {
  EXPECT_EQ(textOf({{L"watermark", L"a&b=c %41\x00E4"}}), L"watermark=a&b=c %41\x00E4&");
}

}  // namespace
}  // namespace quillpress::driver
