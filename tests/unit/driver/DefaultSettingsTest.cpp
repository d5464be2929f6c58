#include <gtest/gtest.h>

#include <algorithm>

#include "umpd/rules/DefaultSettings.h"

namespace quillpress::driver {
namespace {

constexpr wchar_t kViewer[] = L"C:\\drivers\\3\\twsview.exe";

// One line a setting: numbers bare, texts in quotes.
std::wstring listed(const DefaultFolders& folders) {
  std::wstring list;
  for (const DefaultSetting& setting : defaultSettings(folders)) {
    list += setting.name + L'=';
    list += setting.text ? L"'" + *setting.text + L"'" : std::to_wstring(setting.number);
    list += L'\n';
  }
  return list;
}

std::optional<std::wstring> textOf(const DefaultFolders& folders, std::wstring_view name) {
  for (const DefaultSetting& setting : defaultSettings(folders)) {
    if (setting.name == name) return setting.text;
  }
  return std::nullopt;
}

TEST(DefaultSettingsTest, HaveTheirOrderKindsAndValues) {
  EXPECT_EQ(listed({L"C:\\Local", L"C:\\Documents", kViewer}),
            L"NextAction=3\n"
            L"SaveFilenameAction=3\n"
            L"DefaultSaveDir='C:\\Local\\Quillpress'\n"
            L"LastDir='C:\\Documents'\n"
            L"ExecCmdLine='C:\\drivers\\3\\twsview.exe -nav=\"%s\" -docname=\"%s\"'\n"
            L"DefaultSaveFilename='tmp.pdf'\n"
            L"resIndex=3\n"
            L"jpegImageQuality=75\n"
            L"imageDPI=300\n"
            L"TrimNameChar=45\n"
            L"showStashelButton=0\n");
}

TEST(DefaultSettingsTest, WithoutApplicationDataFilesGoToTheRoot) {
  EXPECT_EQ(defaultSaveFolder(L""), L"c:\\");
  EXPECT_EQ(textOf({L"", L"C:\\Documents", kViewer}, L"DefaultSaveDir"), L"c:\\");
  EXPECT_EQ(textOf({L"", L"C:\\Documents", kViewer}, L"LastDir"), L"C:\\Documents");
}

TEST(DefaultSettingsTest, WithoutDocumentsTheLastFolderIsTheDefaultOne) {
  EXPECT_EQ(textOf({L"C:\\Local", L"", kViewer}, L"LastDir"), L"C:\\Local\\Quillpress");
  EXPECT_EQ(textOf({L"", L"", kViewer}, L"LastDir"), L"c:\\");
}

TEST(DefaultSettingsTest, AViewerWithoutPathIsLeftOut) {
  const DefaultFolders known{L"C:\\Local", L"C:\\Documents", kViewer};
  const DefaultFolders tooLong{L"C:\\Local", L"C:\\Documents", L""};
  EXPECT_EQ(textOf(tooLong, L"ExecCmdLine"), std::nullopt);
  EXPECT_EQ(defaultSettings(tooLong).size() + 1, defaultSettings(known).size());
  EXPECT_EQ(textOf(tooLong, L"DefaultSaveFilename"), L"tmp.pdf");
}

}  // namespace
}  // namespace quillpress::driver
