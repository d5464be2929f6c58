// What a printer's settings are when it is used for the first time.

#include <string>
#include <vector>

#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/harness/RegistryWrites.h"
#include "tests/umpd/settings/SettingsTest.h"
#include "tests/umpd/settings/ShellFolders.h"

namespace quillpress::harness {
namespace {

// In the order in which they are written.
const std::vector<std::wstring> kNames = {
    L"printerName",      L"NextAction",  L"SaveFilenameAction",  L"DefaultSaveDir",
    L"LastDir",          L"ExecCmdLine", L"DefaultSaveFilename", L"resIndex",
    L"jpegImageQuality", L"imageDPI",    L"TrimNameChar",        L"showStashelButton",
};

class DefaultsTest : public SettingsTest {
 protected:
  void begin() { EXPECT_NE(Job(library, printer).handle(), 0U); }

  void expectNumber(const std::wstring& name, int value) {
    const Job job(library, printer);
    EXPECT_EQ(key.number(name), static_cast<DWORD>(value));
    EXPECT_EQ(job.number(name), value);
  }

  void expectText(const std::wstring& name, const std::wstring& value) {
    const Job job(library, printer);
    EXPECT_EQ(key.text(name), value);
    EXPECT_EQ(job.text(name), value);
  }
};

TEST_F(DefaultsTest, NextActionIs3) {
  expectNumber(L"NextAction", 3);
}

TEST_F(DefaultsTest, SaveFilenameActionIs3) {
  expectNumber(L"SaveFilenameAction", 3);
}

TEST_F(DefaultsTest, DefaultSaveFilenameIsTmpPdf) {
  expectText(L"DefaultSaveFilename", L"tmp.pdf");
}

TEST_F(DefaultsTest, ResIndexIs3) {
  expectNumber(L"resIndex", 3);
}

TEST_F(DefaultsTest, JpegImageQualityIs75) {
  expectNumber(L"jpegImageQuality", 75);
}

TEST_F(DefaultsTest, ImageDpiIs300) {
  expectNumber(L"imageDPI", 300);
}

TEST_F(DefaultsTest, TrimNameCharIsTheHyphen) {
  expectNumber(L"TrimNameChar", 45);
}

TEST_F(DefaultsTest, ShowStashelButtonIs0) {
  expectNumber(L"showStashelButton", 0);
}

TEST_F(DefaultsTest, TheGlobalKeyHoldsThePrintersName) {
  begin();
  EXPECT_EQ(SettingsKey::global().text(L"printerName"), printer.name());
  EXPECT_EQ(key.type(L"printerName"), std::nullopt);
}

TEST_F(DefaultsTest, DefaultSaveDirLiesInTheLocalApplicationData) {
  expectText(L"DefaultSaveDir", shellFolder(CSIDL_LOCAL_APPDATA) + L"\\Quillpress");
}

TEST_F(DefaultsTest, DefaultSaveDirIsMadeWhenItIsMissing) {
  const std::wstring saveFolder = shellFolder(CSIDL_LOCAL_APPDATA) + L"\\Quillpress";
  RemoveDirectoryW(saveFolder.c_str());
  ASSERT_EQ(GetFileAttributesW(saveFolder.c_str()), INVALID_FILE_ATTRIBUTES);
  begin();
  EXPECT_EQ(GetFileAttributesW(saveFolder.c_str()) & FILE_ATTRIBUTE_DIRECTORY,
            DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST_F(DefaultsTest, DefaultSaveDirLiesInTheRoamingApplicationDataWhenThereIsNoLocalOne) {
  forgetShellFolders(library, {CSIDL_LOCAL_APPDATA});
  const std::wstring saveFolder = shellFolder(CSIDL_APPDATA) + L"\\Quillpress";
  RemoveDirectoryW(saveFolder.c_str());
  expectText(L"DefaultSaveDir", saveFolder);
  EXPECT_EQ(GetFileAttributesW(saveFolder.c_str()) & FILE_ATTRIBUTE_DIRECTORY,
            DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST_F(DefaultsTest, DefaultSaveDirIsTheDriveWithoutApplicationData) {
  forgetShellFolders(library, {CSIDL_LOCAL_APPDATA, CSIDL_APPDATA});
  expectText(L"DefaultSaveDir", L"c:\\");
}

TEST_F(DefaultsTest, LastDirIsTheDocumentsFolder) {
  expectText(L"LastDir", shellFolder(CSIDL_PERSONAL));
}

TEST_F(DefaultsTest, LastDirIsDefaultSaveDirWithoutADocumentsFolder) {
  forgetShellFolders(library, {CSIDL_PERSONAL});
  expectText(L"LastDir", shellFolder(CSIDL_LOCAL_APPDATA) + L"\\Quillpress");
}

TEST_F(DefaultsTest, LastDirIsTheDriveWithoutAnyFolder) {
  forgetShellFolders(library, {CSIDL_PERSONAL, CSIDL_LOCAL_APPDATA, CSIDL_APPDATA});
  expectText(L"LastDir", L"c:\\");
}

TEST_F(DefaultsTest, AFolderWithoutAPathIsNotKnown) {
  library.replace("SHGetPathFromIDListW", [](LPCITEMIDLIST, LPWSTR) -> BOOL { return FALSE; });
  expectText(L"DefaultSaveDir", L"c:\\");
  expectText(L"LastDir", L"c:\\");
}

TEST_F(DefaultsTest, ExecCmdLineRunsTheViewerBesideTheDriver) {
  expectText(L"ExecCmdLine", folder.path() + L"twsview.exe -nav=\"%s\" -docname=\"%s\"");
}

TEST_F(DefaultsTest, AreWrittenInTheirOrder) {
  const RegistryWrites writes(library);
  begin();
  EXPECT_EQ(writes.names(), kNames);
}

TEST_F(DefaultsTest, AreWrittenOnceWhenTheKeyIsMadeByAJobStartedByName) {
  const RegistryWrites writes(library);
  const Job job(library, printer.name());
  EXPECT_EQ(writes.names(), kNames);
  EXPECT_EQ(job.number(L"imageDPI"), 300);
}

// Windows may add a missing zero by itself, so what is handed to it counts.
TEST_F(DefaultsTest, TextsAreWrittenWithTheirFinalZero) {
  const RegistryWrites writes(library);
  begin();
  EXPECT_EQ(writes.sizeOf(L"DefaultSaveFilename"), sizeof L"tmp.pdf");
  EXPECT_EQ(writes.sizeOf(L"printerName"), (printer.name().size() + 1) * sizeof(wchar_t));
}

TEST_F(DefaultsTest, AreNotWrittenIntoAKeyThatIsThere) {
  usePrinter();
  const RegistryWrites writes(library);
  begin();
  EXPECT_EQ(writes.names(), std::vector<std::wstring>());
  EXPECT_EQ(key.names(), (std::vector<std::wstring>{L"in use"}));
  EXPECT_EQ(SettingsKey::global().type(L"printerName"), std::nullopt);
}

TEST_F(DefaultsTest, AreNotWrittenAgainByTheNextJob) {
  begin();
  key.setNumber(L"imageDPI", 600);
  key.remove(L"resIndex");
  const RegistryWrites writes(library);
  const Job job(library, printer);
  EXPECT_EQ(writes.names(), std::vector<std::wstring>());
  EXPECT_EQ(job.number(L"imageDPI"), 600);
  EXPECT_EQ(job.number(L"resIndex"), -1);
}

TEST_F(DefaultsTest, TheLastNewPrinterIsTheGlobalOne) {
  begin();
  const Printer other;
  EXPECT_NE(Job(library, other).handle(), 0U);
  EXPECT_EQ(SettingsKey::global().text(L"printerName"), other.name());
  begin();
  EXPECT_EQ(SettingsKey::global().text(L"printerName"), other.name());
}

TEST_F(DefaultsTest, AreFollowedByTheIniSectionOfAllPrintersAndThatOfThisOne) {
  folder.writeIni("[init]\nimageDPI=600\nfirst=1\nshared=init\n[" + narrow(printer.name()) +
                  "]\nshared=printer\nsecond=x\n[Another printer]\nthird=3\n");
  const RegistryWrites writes(library);
  const Job job(library, printer);
  std::vector<std::wstring> names = kNames;
  names.insert(names.end(), {L"imageDPI", L"first", L"shared", L"shared", L"second"});
  EXPECT_EQ(writes.names(), names);
  EXPECT_EQ(job.number(L"imageDPI"), 600);
  EXPECT_EQ(job.text(L"shared"), L"printer");
  EXPECT_EQ(job.text(L"second"), L"x");
  EXPECT_EQ(job.text(L"third", L"none"), L"none");
  EXPECT_EQ(key.number(L"imageDPI"), 600U);
}

TEST_F(DefaultsTest, TakeTheIniFileAlsoWhenItDoesNotOverride) {
  folder.writeIni("[init]\noverrideUserSettings=0\nimageDPI=600\n");
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 600);
  key.setNumber(L"imageDPI", 150);
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 150);
}

// Unlike the override, which looks for the name of the key.
TEST_F(DefaultsTest, TakeTheIniSectionByTheNameOfThePrinterAsItStands) {
  pretendPrinterName(library, "\\\\server\\queue");
  const SettingsKey networkKey = SettingsKey::ofPrinter(L"\\\\server\\queue");
  networkKey.removeTree();
  folder.writeIni("[\\\\server\\queue]\nimageDPI=600\n[,,server,queue]\nresIndex=9\n");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"imageDPI"), 600);
  EXPECT_EQ(job.number(L"resIndex"), 3);
  networkKey.removeTree();
}

TEST_F(DefaultsTest, AValueThatCannotBeWrittenIsNotASetting) {
  RegistryWrites writes(library);
  writes.refuse = [](const std::wstring& name) { return name == L"imageDPI"; };
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"imageDPI", 17), 17);
  EXPECT_EQ(job.number(L"TrimNameChar", 17), 45);
}

class DefaultsOnEveryWindowsTest : public EveryWindowsTest {
 protected:
  DriverFolder folder{GetParam()};
  Printer printer;
  SettingsKey key = SettingsKey::ofPrinter(printer.name());
};

TEST_P(DefaultsOnEveryWindowsTest, AreWritten) {
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"NextAction"), 3);
  EXPECT_EQ(job.number(L"showStashelButton"), 0);
  EXPECT_EQ(key.number(L"resIndex"), 3U);
  EXPECT_EQ(SettingsKey::global().text(L"printerName"), printer.name());
}

TEST_P(DefaultsOnEveryWindowsTest, TheViewerLiesInTheFolderOfTheDriverVersion) {
  EXPECT_EQ(Job(library, printer).text(L"ExecCmdLine"),
            folder.path() + L"twsview.exe -nav=\"%s\" -docname=\"%s\"");
}

INSTANTIATE_TEST_SUITE_P(Releases, DefaultsOnEveryWindowsTest, ::testing::ValuesIn(kEveryWindows),
                         releaseName);

}  // namespace
}  // namespace quillpress::harness
