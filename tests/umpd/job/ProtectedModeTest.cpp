// Where a browser in protected mode puts the output file.

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h.
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <vector>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

std::wstring shellFolder(int folder) {
  std::array<wchar_t, MAX_PATH> path{};
  EXPECT_EQ(SHGetFolderPathW(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, path.data()), S_OK);
  return path.data();
}

// The browser's copy of an application-data folder, within it.
std::wstring virtualizedFolder(const std::wstring& applicationData) {
  EXPECT_EQ(applicationData.at(1), L':');
  return applicationData + L"\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\" +
         applicationData.substr(0, 1) + applicationData.substr(2) + L"\\";
}

void makeFolders(const std::wstring& path) {
  for (std::size_t end = path.find(L'\\'); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
    CreateDirectoryW(path.substr(0, end).c_str(), nullptr);
  }
}

// Jobs whose folder cannot be made.
class ProtectedModeTest : public JobTest {
 protected:
  ProtectedModeTest() {
    settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
    makeFolders(local);
    makeFolders(roaming);
    DeleteFileW((local + L"Document.pdf").c_str());
    DeleteFileW((roaming + L"Document.pdf").c_str());
  }
  ~ProtectedModeTest() override {
    DeleteFileW((local + L"Document.pdf").c_str());
    DeleteFileW((roaming + L"Document.pdf").c_str());
  }

  void answer(HRESULT result, BOOL isProtected) {
    byName.replace("IEIsProtectedModeProcess", [=](BOOL* protectedMode) -> HRESULT {
      *protectedMode = isProtected;
      return result;
    });
  }

  // The folder with this number is unknown to the shell.
  void hideFolders(std::initializer_list<int> folders) {
    library.replace(
        "SHGetSpecialFolderLocation",
        [hidden = std::vector<int>(folders)](HWND owner, int wanted, LPITEMIDLIST* list) -> HRESULT {
          if (std::find(hidden.begin(), hidden.end(), wanted) != hidden.end()) return E_FAIL;
          return ::SHGetSpecialFolderLocation(owner, wanted, list);
        });
  }

  // The job is left where it was wanted, which is nowhere.
  void expectNoOtherFile() {
    EXPECT_EQ(print(L"Document"), 0);
    EXPECT_EQ(lastFile(), L"Q:\\nowhere\\Document.pdf");
    EXPECT_FALSE(fileExists(local + L"Document.pdf"));
    EXPECT_FALSE(fileExists(roaming + L"Document.pdf"));
  }

  [[nodiscard]] bool wasAsked() const {
    const auto& asked = byName.functionsAsked();
    return std::find(asked.begin(), asked.end(), "IEIsProtectedModeProcess") != asked.end();
  }

  const std::wstring local = virtualizedFolder(shellFolder(CSIDL_LOCAL_APPDATA));
  const std::wstring roaming = virtualizedFolder(shellFolder(CSIDL_APPDATA));
};

TEST_F(ProtectedModeTest, WritesIntoTheBrowsersCopyOfTheLocalFolder) {
  answer(S_OK, TRUE);
  EXPECT_EQ(print(L"Document", "bytes"), 1);
  EXPECT_EQ(readFile(local + L"Document.pdf"), "bytes");
  EXPECT_FALSE(fileExists(roaming + L"Document.pdf"));
}

TEST_F(ProtectedModeTest, TellsTheNewPath) {
  answer(S_OK, TRUE);
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(lastFile(), local + L"Document.pdf");
}

TEST_F(ProtectedModeTest, FallsBackToTheRoamingFolder) {
  answer(S_OK, TRUE);
  hideFolders({CSIDL_LOCAL_APPDATA});
  EXPECT_EQ(print(L"Document", "bytes"), 1);
  EXPECT_EQ(lastFile(), roaming + L"Document.pdf");
  EXPECT_EQ(readFile(roaming + L"Document.pdf"), "bytes");
}

TEST_F(ProtectedModeTest, TakesWhatFollowsTheLastBackslashForTheName) {
  answer(S_OK, TRUE);
  settings.setText(L"DefaultSaveDir", L"Q:/no/where/");
  settings.setNumber(L"SaveFilenameAction", 1);
  settings.setText(L"DefaultSaveFilename", L"a\\b\\Document.pdf");
  EXPECT_EQ(print(L""), 1);
  EXPECT_EQ(lastFile(), local + L"Document.pdf");
}

TEST_F(ProtectedModeTest, FailsTheWriteWhenTheCopyCannotBeCreatedEither) {
  answer(S_OK, TRUE);
  CreateDirectoryW((local + L"Document.pdf").c_str(), nullptr);
  EXPECT_EQ(print(L"Document"), 0);
  EXPECT_EQ(lastFile(), local + L"Document.pdf");
  RemoveDirectoryW((local + L"Document.pdf").c_str());
}

TEST_F(ProtectedModeTest, HasNoCopyWithoutAnApplicationDataFolder) {
  answer(S_OK, TRUE);
  hideFolders({CSIDL_LOCAL_APPDATA, CSIDL_APPDATA});
  expectNoOtherFile();
}

TEST_F(ProtectedModeTest, IsOffForAProcessThatIsNotProtected) {
  answer(S_OK, FALSE);
  expectNoOtherFile();
  EXPECT_TRUE(wasAsked());
}

TEST_F(ProtectedModeTest, IsOffForAnyOtherAnswer) {
  answer(S_OK, 2);
  expectNoOtherFile();
}

TEST_F(ProtectedModeTest, IsOffWithoutTheFunction) {
  byName.makeAbsent("IEIsProtectedModeProcess");
  expectNoOtherFile();
}

TEST_F(ProtectedModeTest, IsOffWithoutTheBrowser) {
  answer(S_OK, TRUE);
  byName.makeMissing(L"ieframe.dll");
  expectNoOtherFile();
}

TEST_F(ProtectedModeTest, DoesNotMatterWhenTheFileCanBeCreated) {
  answer(S_OK, TRUE);
  settings.setText(L"DefaultSaveDir", folder.path());
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(lastFile(), folder.file(L"Document.pdf"));
  EXPECT_FALSE(wasAsked());
}

}  // namespace
}  // namespace quillpress::harness
