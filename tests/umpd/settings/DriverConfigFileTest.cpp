// twscfg.1, by which NT 4.0 tells the rendering side a few settings.

#include <array>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

class DriverConfigFileTest : public SettingsTest {
 protected:
  DriverConfigFileTest() {
    pretend(library, kWindowsNt4);
    usePrinter();
    std::array<wchar_t, MAX_PATH> system{};
    GetSystemDirectoryW(system.data(), MAX_PATH);
    path = system.data() + std::wstring(L"\\twscfg.1");
    DeleteFileW(path.c_str());
  }
  ~DriverConfigFileTest() override { DeleteFileW(path.c_str()); }

  void begin() { EXPECT_NE(Job(library, printer.name()).handle(), 0U); }

  [[nodiscard]] bool fileExists() const {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  [[nodiscard]] std::string bytes() const {
    std::ifstream file(narrow(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // What the file holds, read as UTF-16 without any mark.
  [[nodiscard]] std::wstring content() const {
    const std::string raw = bytes();
    EXPECT_EQ(raw.size() % 2, 0U);
    return {reinterpret_cast<const wchar_t*>(raw.data()), raw.size() / 2};
  }

  std::wstring path;
};

class WantedSettingTest : public DriverConfigFileTest,
                          public ::testing::WithParamInterface<const wchar_t*> {};

TEST_P(WantedSettingTest, IsWritten) {
  key.setText(GetParam(), L"value");
  begin();
  EXPECT_EQ(content(), std::wstring(GetParam()) + L"=value&");
}

INSTANTIATE_TEST_SUITE_P(Names, WantedSettingTest,
                         ::testing::Values(L"resolution", L"PrinterData4", L"pdfTemplate",
                                           L"pdfTemplateOnTop", L"imageDPI", L"jpegImageQuality",
                                           L"watermarkFontName", L"watermark", L"watermarkFontSize"),
                         [](const auto& each) { return narrow(each.param); });

TEST_F(DriverConfigFileTest, HoldsAllWantedSettingsInTheOrderOfLoading) {
  for (const wchar_t* name :
       {L"watermarkFontSize", L"resolution", L"jpegImageQuality", L"pdfTemplateOnTop", L"PrinterData4",
        L"imageDPI", L"watermark", L"watermarkFontName", L"pdfTemplate"}) {
    key.setText(name, L"of " + std::wstring(name));
  }
  begin();
  std::wstring expected;
  for (const std::wstring& name : key.names()) {
    if (name != L"in use") expected.append(name).append(L"=of ").append(name).append(L"&");
  }
  EXPECT_EQ(content(), expected);
}

TEST_F(DriverConfigFileTest, HoldsNumbersAsDecimals) {
  key.setNumber(L"imageDPI", 600);
  key.setNumber(L"resolution", static_cast<DWORD>(-1));
  begin();
  EXPECT_EQ(content(), L"imageDPI=600&resolution=-1&");
}

TEST_F(DriverConfigFileTest, IsUtf16WithoutMarkAndFinalZero) {
  key.setText(L"watermark", L"\u0416");
  begin();
  EXPECT_EQ(bytes(), std::string("w\0a\0t\0e\0r\0m\0a\0r\0k\0=\0\x16\x04&\0", 24));
}

TEST_F(DriverConfigFileTest, LeavesOtherSettingsOut) {
  key.setNumber(L"passthru", 0);
  key.setText(L"DefaultSaveDir", L"c:\\out");
  key.setNumber(L"resIndex", 3);
  key.setText(L"watermarkFont", L"Courier");
  key.setText(L"imageDPI2", L"1");
  begin();
  EXPECT_EQ(content(), L"");
  EXPECT_TRUE(fileExists());
}

TEST_F(DriverConfigFileTest, LeavesSettingsInAnotherCaseOut) {
  key.setText(L"printerdata4", L"1");
  key.setText(L"IMAGEDPI", L"600");
  key.setText(L"Watermark", L"Draft");
  key.setText(L"resolution", L"300");
  begin();
  EXPECT_EQ(content(), L"resolution=300&");
}

TEST_F(DriverConfigFileTest, LeavesEmptySettingsOut) {
  key.setText(L"watermark", L"");
  key.setText(L"pdfTemplate", L"letter");
  begin();
  EXPECT_EQ(content(), L"pdfTemplate=letter&");
}

TEST_F(DriverConfigFileTest, CopiesValuesAsTheyAre) {
  key.setText(L"watermark", L"a&b=c %26 ");
  begin();
  EXPECT_EQ(content(), L"watermark=a&b=c %26 &");
}

TEST_F(DriverConfigFileTest, HoldsTheDefaultsOfANewPrinter) {
  key.removeTree();
  begin();
  EXPECT_EQ(content(), L"imageDPI=300&jpegImageQuality=75&");
}

TEST_F(DriverConfigFileTest, HoldsWhatTheIniFileOverrides) {
  const DriverFolder folderOfNt4(kWindowsNt4);
  folderOfNt4.writeIni("[init]\noverrideUserSettings=1\nimageDPI=0600\n");
  begin();
  EXPECT_EQ(content(), L"imageDPI=600&");
}

TEST_F(DriverConfigFileTest, IsMadeAnewByEveryJob) {
  key.setText(L"watermark", std::wstring(5000, L'x'));
  begin();
  key.setText(L"watermark", L"short");
  begin();
  EXPECT_EQ(content(), L"watermark=short&");
}

TEST_F(DriverConfigFileTest, IsOpenForOthersToReadWhileItIsWritten) {
  int created = 0;
  library.replace("CreateFileW",
                  [&](LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                      DWORD disposition, DWORD flags, HANDLE like) -> HANDLE {
                    if (name == path) {
                      ++created;
                      EXPECT_EQ(access, DWORD{GENERIC_WRITE});
                      EXPECT_EQ(share, DWORD{FILE_SHARE_READ});
                      EXPECT_EQ(disposition, DWORD{CREATE_ALWAYS});
                    }
                    return ::CreateFileW(name, access, share, security, disposition, flags, like);
                  });
  begin();
  EXPECT_EQ(created, 1);
}

TEST_F(DriverConfigFileTest, ThatCannotBeMadeIsReportedAndTheJobGoesOn) {
  CreateDirectoryW(path.c_str(), nullptr);
  begin();
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, L"copyNameValuesToPrinterDriverConfigFile failed");
  EXPECT_TRUE(box.wide);
  EXPECT_EQ(box.style, UINT{MB_OK | MB_SERVICE_NOTIFICATION});
  EXPECT_EQ(box.owner, nullptr);
  RemoveDirectoryW(path.c_str());
}

TEST_F(DriverConfigFileTest, IsNotWrittenForAJobStartedByHandle) {
  key.setText(L"watermark", L"Draft");
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_FALSE(fileExists());
}

class NoDriverConfigFileTest : public DriverConfigFileTest,
                               public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(NoDriverConfigFileTest, OnOtherReleases) {
  pretend(library, GetParam());
  key.setText(L"watermark", L"Draft");
  begin();
  EXPECT_FALSE(fileExists());
}

INSTANTIATE_TEST_SUITE_P(Releases, NoDriverConfigFileTest,
                         ::testing::Values(kWindows98, kWindows2000, kWindowsXp, kWindowsVista, kWindows7,
                                           kWindows10),
                         releaseName);

}  // namespace
}  // namespace quillpress::harness
