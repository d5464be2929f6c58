// What a printer's settings are when it is used for the first time.

#include <string>
#include <vector>

#include "tests/rules/Rows.h"
#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/harness/RegistryWrites.h"
#include "tests/umpd/settings/SettingsTest.h"
#include "tests/umpd/settings/ShellFolders.h"

namespace quillpress::harness {
namespace {

// In the order in which they are written.
std::vector<std::wstring> namesInOrder() {
  std::vector<std::wstring> names = {L"printerName"};
  for (const rules::Row& row : rules::rowsOf("default_settings.txt")) names.push_back(row.input);
  return names;
}

class DefaultsTest : public SettingsTest {
 protected:
  void begin() { EXPECT_NE(Job(library, printer).handle(), 0U); }

  void expectText(const std::wstring& name, const std::wstring& value) {
    const Job job(library, printer);
    EXPECT_EQ(key.text(name), value);
    EXPECT_EQ(job.text(name), value);
  }
};

TEST_F(DefaultsTest, AreThoseOfTheRows) {
  const std::wstring driverFolder = folder.path().substr(0, folder.path().size() - 1);
  const Job job(library, printer);
  for (const rules::Row& row : rules::rowsOf("default_settings.txt")) {
    const std::wstring value = rules::filledIn(row.output, {{L"local", shellFolder(CSIDL_LOCAL_APPDATA)},
                                                            {L"documents", shellFolder(CSIDL_PERSONAL)},
                                                            {L"driver", driverFolder}});
    if (value.front() == L'\'') {
      const std::wstring text = value.substr(1, value.size() - 2);
      EXPECT_EQ(key.text(row.input), text) << row;
      EXPECT_EQ(job.text(row.input), text) << row;
    } else {
      EXPECT_EQ(key.number(row.input), std::stoul(value)) << row;
      EXPECT_EQ(job.number(row.input), std::stoi(value)) << row;
    }
  }
}

TEST_F(DefaultsTest, TheGlobalKeyHoldsThePrintersName) {
  begin();
  EXPECT_EQ(SettingsKey::global().text(L"printerName"), printer.name());
  EXPECT_EQ(key.type(L"printerName"), std::nullopt);
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

TEST_F(DefaultsTest, AreWrittenInTheirOrder) {
  const RegistryWrites writes(library);
  begin();
  EXPECT_EQ(writes.names(), namesInOrder());
}

TEST_F(DefaultsTest, AreWrittenOnceWhenTheKeyIsMadeByAJobStartedByName) {
  const RegistryWrites writes(library);
  const Job job(library, printer.name());
  EXPECT_EQ(writes.names(), namesInOrder());
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
  std::vector<std::wstring> names = namesInOrder();
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
