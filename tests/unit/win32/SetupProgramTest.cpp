#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/harness/FreshProcess.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "tests/unit/win32/support/NoteStart.h"
#include "umpd/channel/LauncherProxy.h"
#include "umpd/spooler/Printer.h"

namespace quillpress::driver {
namespace {

class SetupProgramTest : public classes::ClassTest {
 protected:
  SetupProgramTest() {
    EXPECT_TRUE(CopyFileW(classes::NoteStart::program().c_str(), setupProgram().c_str(), FALSE));
  }
  ~SetupProgramTest() override {
    run.remove(L"twsmsnd.exe");
    EXPECT_TRUE(DeleteFileW(setupProgram().c_str()));
  }

  [[nodiscard]] std::wstring setupProgram() const { return folder.path() + L"twssetup.exe"; }

  const harness::DriverFolder folder;
  const harness::SettingsKey run{HKEY_CURRENT_USER, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"};
  classes::NoteStart note;
  UserSid user;
};

TEST_F(SetupProgramTest, RunsForAUserOfTheOldLauncher) {
  run.setText(L"twsmsnd.exe", L"C:\\windows\\system32\\spool\\drivers\\w32x86\\2\\twsmsnd.exe");
  runSetupProgramIfNeeded(L"My printer", user);
  // It has ended when the call returns.
  ASSERT_TRUE(note.hasRun());
  EXPECT_EQ(note.commandLine(), setupProgram() + L" -printer=\"My printer\" -installStartmenu");
}

TEST_F(SetupProgramTest, ThePathIsEnough) {
  run.setText(L"twsmsnd.exe", L"\"D:\\2\\twsmsnd\" -quiet");
  runSetupProgramIfNeeded(L"P", user);
  EXPECT_TRUE(note.hasRun());
}

TEST_F(SetupProgramTest, RunsForNobodyElse) {
  run.setText(L"twsmsnd.exe", L"C:\\windows\\system32\\spool\\drivers\\w32x86\\3\\twsmsnd.exe");
  runSetupProgramIfNeeded(L"P", user);
  run.setText(L"twsmsnd.exe", L"C:\\2\\other.exe");
  runSetupProgramIfNeeded(L"P", user);
  run.setText(L"twsmsnd.exe", L"");
  runSetupProgramIfNeeded(L"P", user);
  run.remove(L"twsmsnd.exe");
  runSetupProgramIfNeeded(L"P", user);
  EXPECT_FALSE(note.hasRun());
}

TEST_F(SetupProgramTest, TheKeyOfTheProgramsIsOpenedWithFullAccess) {
  auto* const create = classes::real<decltype(RegCreateKeyExW)>(L"advapi32.dll", "RegCreateKeyExW");
  std::vector<std::pair<std::wstring, REGSAM>> opened;
  imports.replace("RegCreateKeyExW",
                  [&](HKEY root, LPCWSTR path, DWORD reserved, LPWSTR kind, DWORD options, REGSAM access,
                      LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD disposition) -> LSTATUS {
                    opened.emplace_back(path, access);
                    return create(root, path, reserved, kind, options, access, security, key, disposition);
                  });
  runSetupProgramIfNeeded(L"P", user);
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(opened[0].first, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run");
  EXPECT_EQ(opened[0].second, static_cast<REGSAM>(KEY_ALL_ACCESS));
}

TEST_F(SetupProgramTest, AMissingProgramIsToldToTheDebugger) {
  run.setText(L"twsmsnd.exe", L"C:\\2\\twsmsnd.exe");
  ASSERT_TRUE(DeleteFileW(setupProgram().c_str()));
  runSetupProgramIfNeeded(L"P", user);
  EXPECT_EQ(takeDebuggerOutput(),
            L"CreateProcess failed.  Cmd Line : " + setupProgram() + L" -printer=\"P\" -installStartmenu\n");
  ASSERT_TRUE(CopyFileW(classes::NoteStart::program().c_str(), setupProgram().c_str(), FALSE));
}

// A process asks for its install folder once.
TEST_F(SetupProgramTest, WithoutInstallFolderNothingRuns) {
  harness::inFreshProcess([&] {
    run.setText(L"twsmsnd.exe", L"C:\\2\\twsmsnd.exe");
    imports.replace("GetPrinterDriverDirectoryW",
                    [](LPWSTR, LPWSTR, DWORD, LPBYTE, DWORD, LPDWORD) -> BOOL { return FALSE; });
    runSetupProgramIfNeeded(L"P", user);
    EXPECT_FALSE(note.hasRun());
    EXPECT_EQ(takeDebuggerOutput(), L"");
  });
  // The other process has removed it.
  CopyFileW(classes::NoteStart::program().c_str(), setupProgram().c_str(), FALSE);
}

}  // namespace
}  // namespace quillpress::driver
