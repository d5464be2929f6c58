#include <gtest/gtest.h>

#include "tests/rules/Rows.h"
#include "umpd/rules/DefaultSettings.h"

namespace quillpress::driver {
namespace {

constexpr wchar_t kViewer[] = L"C:\\drivers\\3\\twsview.exe";

// As the rows have it: numbers bare, texts in quotes.
std::wstring valueOf(const DefaultSetting& setting) {
  return setting.text ? L"'" + *setting.text + L"'" : std::to_wstring(setting.number);
}

std::optional<std::wstring> textOf(const DefaultFolders& folders, std::wstring_view name) {
  for (const DefaultSetting& setting : defaultSettings(folders)) {
    if (setting.name == name) return setting.text;
  }
  return std::nullopt;
}

TEST(DefaultSettingsTest, HaveTheirOrderKindsAndValues) {
  const std::vector<DefaultSetting> settings = defaultSettings({L"C:\\Local", L"C:\\Documents", kViewer});
  const std::vector<rules::Row> rows = rules::rowsOf("default_settings.txt");
  ASSERT_EQ(settings.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(settings[i].name, rows[i].input);
    EXPECT_EQ(valueOf(settings[i]), rules::filledIn(rows[i].output, {{L"local", L"C:\\Local"},
                                                                     {L"documents", L"C:\\Documents"},
                                                                     {L"driver", L"C:\\drivers\\3"}}))
        << rows[i];
  }
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
