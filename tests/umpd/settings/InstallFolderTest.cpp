// Where the library looks for its ini file and the product's programs.

#include <cstring>
#include <string>

#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

class InstallFolderTest : public SettingsTest {
 protected:
  // Has the spooler tell this folder of printer drivers; none means that it fails.
  void tellDriverDirectory(const std::wstring& directory) {
    library.replace("GetPrinterDriverDirectoryW",
                    [this, directory](LPWSTR server, LPWSTR environment, DWORD level, LPBYTE buffer,
                                      DWORD size, LPDWORD needed) -> BOOL {
                      ++questions;
                      EXPECT_EQ(server, nullptr);
                      EXPECT_EQ(environment, nullptr);
                      EXPECT_EQ(level, 1U);
                      const size_t bytes = (directory.size() + 1) * sizeof(wchar_t);
                      *needed = static_cast<DWORD>(bytes);
                      if (directory.empty() || size < bytes) {
                        SetLastError(ERROR_INSUFFICIENT_BUFFER);
                        return FALSE;
                      }
                      std::memcpy(buffer, directory.c_str(), bytes);
                      return TRUE;
                    });
  }

  // The folder for which an ini file there has a path of this many characters, made on the disk.
  static std::wstring directoryForIniPath(size_t length) {
    const size_t below = std::wstring(L"\\3\\twsconf.ini").size();
    std::wstring directory = L"c:\\quillpress folders";
    while (directory.size() + below < length) {
      const size_t left = length - below - directory.size() - 1;
      // No name is longer than 100, and none is left without a character.
      const size_t part = left > 100 ? (left == 101 ? 99 : 100) : left;
      directory += L"\\" + std::wstring(part, L'd');
    }
    EXPECT_EQ(directory.size() + below, length);
    for (size_t end = 3; end != std::wstring::npos; end = directory.find(L'\\', end + 1)) {
      CreateDirectoryW(directory.substr(0, end).c_str(), nullptr);
    }
    CreateDirectoryW(directory.c_str(), nullptr);
    CreateDirectoryW((directory + L"\\3").c_str(), nullptr);
    return directory;
  }

  static void writeIni(const std::wstring& directory) {
    const std::wstring path = directory + L"\\3\\twsconf.ini";
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE) << "error " << GetLastError();
    const std::string text = "[init]\noverrideUserSettings=1\nmark=from the file\n";
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
  }

  int questions = 0;
};

TEST_F(InstallFolderTest, IsAskedForOnce) {
  tellDriverDirectory(L"c:\\quillpress folders");
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_EQ(questions, 1);
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_EQ(questions, 1);
}

TEST_F(InstallFolderTest, IsKeptWhenTheSpoolerWouldTellAnotherOne) {
  tellDriverDirectory(L"c:\\first");
  EXPECT_NE(Job(library, printer).handle(), 0U);
  tellDriverDirectory(L"c:\\second");
  const Printer other;
  EXPECT_EQ(Job(library, other).text(L"ExecCmdLine"),
            L"c:\\first\\3\\twsview.exe -nav=\"%s\" -docname=\"%s\"");
}

TEST_F(InstallFolderTest, ThatTheSpoolerDoesNotTellMeansNoViewerAndNoIniFile) {
  tellDriverDirectory(L"");
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"ExecCmdLine", L"none"), L"none");
  EXPECT_EQ(key.type(L"ExecCmdLine"), std::nullopt);
  EXPECT_EQ(job.text(L"DefaultSaveFilename"), L"tmp.pdf");
}

TEST_F(InstallFolderTest, MayMakeAnIniPathOf259Characters) {
  const std::wstring directory = directoryForIniPath(259);
  writeIni(directory);
  tellDriverDirectory(directory);
  EXPECT_EQ(Job(library, printer).text(L"mark", L"none"), L"from the file");
}

TEST_F(InstallFolderTest, ThatMakesAnIniPathOf260CharactersHasNoIniFile) {
  const std::wstring directory = directoryForIniPath(260);
  writeIni(directory);
  tellDriverDirectory(directory);
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"mark", L"none"), L"none");
}

TEST_F(InstallFolderTest, MayMakeAViewerPathOf259Characters) {
  // Its name is as long as that of the ini file.
  const std::wstring directory = directoryForIniPath(259);
  tellDriverDirectory(directory);
  EXPECT_EQ(Job(library, printer).text(L"ExecCmdLine"),
            directory + L"\\3\\twsview.exe -nav=\"%s\" -docname=\"%s\"");
}

TEST_F(InstallFolderTest, ThatMakesAViewerPathOf260CharactersHasNoCommandLine) {
  tellDriverDirectory(directoryForIniPath(260));
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"ExecCmdLine", L"none"), L"none");
  EXPECT_EQ(job.number(L"showStashelButton"), 0);
}

TEST_F(InstallFolderTest, LongerThanAnyPathIsNone) {
  tellDriverDirectory(std::wstring(259, L'd'));
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"ExecCmdLine", L"none"), L"none");
}

class InstallFolderOfReleaseTest : public EveryWindowsTest {
 protected:
  Printer printer;
};

TEST_P(InstallFolderOfReleaseTest, HoldsTheIniFile) {
  const DriverFolder folder(GetParam());
  folder.writeIni("[init]\noverrideUserSettings=1\nmark=from the file\n");
  EXPECT_EQ(Job(library, printer).text(L"mark", L"none"), L"from the file");
}

TEST_P(InstallFolderOfReleaseTest, IsNotThatOfOtherReleases) {
  const DriverFolder own(GetParam());
  for (const WindowsRelease& other : {kWindows98, kWindowsNt4, kWindows7}) {
    const DriverFolder folder(other);
    if (folder.path() == own.path()) continue;
    folder.writeIni("[init]\noverrideUserSettings=1\nmark=from the file\n");
    EXPECT_EQ(Job(library, printer).text(L"mark", L"none"), L"none") << other.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Releases, InstallFolderOfReleaseTest, ::testing::ValuesIn(kEveryWindows),
                         releaseName);

}  // namespace
}  // namespace quillpress::harness
