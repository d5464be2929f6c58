// The set-up program, which runs for users whose log-on still starts the launcher of the old driver
// interface.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/launcher/support/Thread.h"
#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

std::wstring standIn() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring program = path.data();
  return program.substr(0, program.rfind(L'\\') + 1) + L"note_setup.exe";
}

class SetupProgramTest : public NamingTest {
 protected:
  struct Start {
    std::optional<std::wstring> application;
    std::wstring commandLine;
    bool inheritsHandles;
    DWORD flags;
    bool hasEnvironment;
    bool hasFolder;
  };

  SetupProgramTest() { run.remove(L"twsmsnd.exe"); }
  ~SetupProgramTest() override { run.remove(L"twsmsnd.exe"); }

  void startOldLauncher() const {
    run.setText(L"twsmsnd.exe", L"C:\\windows\\drivers\\2\\twsmsnd.exe /quiet");
  }

  // Records what is started; nothing is.
  void recordStarts() {
    library.replace("CreateProcessW",
                    [this](LPCWSTR application, LPWSTR commandLine, LPSECURITY_ATTRIBUTES,
                           LPSECURITY_ATTRIBUTES, BOOL inherits, DWORD flags, LPVOID environment,
                           LPCWSTR workingFolder, LPSTARTUPINFOW, LPPROCESS_INFORMATION) -> BOOL {
                      const auto name =
                          application == nullptr ? std::nullopt : std::optional<std::wstring>(application);
                      starts.push_back({name, commandLine, inherits != FALSE, flags, environment != nullptr,
                                        workingFolder != nullptr});
                      SetLastError(ERROR_FILE_NOT_FOUND);
                      return FALSE;
                    });
  }

  [[nodiscard]] std::wstring commandLine() const {
    return program + L" -printer=\"" + printer.name() + L"\" -installStartmenu";
  }

  void expectStarts(std::size_t count) {
    EXPECT_NE(Job(library, printer).handle(), 0U);
    EXPECT_EQ(starts.size(), count);
  }

  const SettingsKey run{HKEY_CURRENT_USER, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"};
  const DriverFolder driverFolder;
  const std::wstring program = driverFolder.path() + L"twssetup.exe";
  std::vector<Start> starts;
};

TEST_F(SetupProgramTest, IsStartedForThePrinter) {
  startOldLauncher();
  recordStarts();
  expectStarts(1);
  EXPECT_EQ(starts.at(0).application, program);
  EXPECT_EQ(starts.at(0).commandLine, commandLine());
}

TEST_F(SetupProgramTest, IsDetachedAndOfNormalPriority) {
  startOldLauncher();
  recordStarts();
  expectStarts(1);
  EXPECT_EQ(starts.at(0).flags, static_cast<DWORD>(DETACHED_PROCESS | NORMAL_PRIORITY_CLASS));
  EXPECT_FALSE(starts.at(0).inheritsHandles);
  EXPECT_FALSE(starts.at(0).hasEnvironment);
  EXPECT_FALSE(starts.at(0).hasFolder);
}

TEST_F(SetupProgramTest, IsStartedWhateverStandsAroundTheOldLauncher) {
  run.setText(L"twsmsnd.exe", L"\\2\\twsmsnd");
  recordStarts();
  expectStarts(1);
}

TEST_F(SetupProgramTest, IsNotStartedWithoutAValue) {
  recordStarts();
  expectStarts(0);
}

TEST_F(SetupProgramTest, IsNotStartedForTheNewLauncher) {
  run.setText(L"twsmsnd.exe", L"C:\\windows\\drivers\\3\\twsmsnd.exe");
  recordStarts();
  expectStarts(0);
}

TEST_F(SetupProgramTest, IsNotStartedForAnEmptyValue) {
  run.setText(L"twsmsnd.exe", L"");
  recordStarts();
  expectStarts(0);
}

TEST_F(SetupProgramTest, IsNotStartedForAnotherValue) {
  run.setText(L"another", L"C:\\windows\\drivers\\2\\twsmsnd.exe");
  recordStarts();
  expectStarts(0);
  run.remove(L"another");
}

TEST_F(SetupProgramTest, IsNotStartedByAJobThatBeginsByName) {
  startOldLauncher();
  recordStarts();
  EXPECT_NE(Job(library, printer.name()).handle(), 0U);
  EXPECT_TRUE(starts.empty());
}

TEST_F(SetupProgramTest, IsNotStartedByAJobThatCannotBegin) {
  startOldLauncher();
  recordStarts();
  std::wstring name = L"Document";
  EXPECT_EQ(Driver(library).docStart2K(nullptr, 1, name.data(), name.data()), 0U);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(starts.empty());
}

TEST_F(SetupProgramTest, IsNotStartedWithoutADriverFolder) {
  startOldLauncher();
  recordStarts();
  FAIL_EVERY(library, GetPrinterDriverDirectoryW, FALSE, ERROR_ACCESS_DENIED);
  expectStarts(0);
  EXPECT_TRUE(boxes.take().empty());
  EXPECT_TRUE(debuggerOutput.take().empty());
}

TEST_F(SetupProgramTest, ThatFailsIsToldToTheDebugger) {
  startOldLauncher();
  recordStarts();
  expectStarts(1);
  EXPECT_EQ(debuggerOutput.takeJoined(), L"CreateProcess failed.  Cmd Line : " + commandLine() + L"\n");
}

TEST_F(SetupProgramTest, ThatIsMissingIsToldToTheDebugger) {
  startOldLauncher();
  DeleteFileW(program.c_str());
  EXPECT_EQ(place(L"x"), inFolder(L"x.pdf"));
  EXPECT_EQ(debuggerOutput.takeJoined(), L"CreateProcess failed.  Cmd Line : " + commandLine() + L"\n");
}

TEST_F(SetupProgramTest, IsDecidedInTheKeyOfTheUserWithFullAccess) {
  REGSAM access = 0;
  library.replace("RegCreateKeyExW",
                  [&](HKEY root, LPCWSTR path, DWORD, LPWSTR, DWORD options, REGSAM wanted,
                      LPSECURITY_ATTRIBUTES, PHKEY key, LPDWORD disposition) -> LONG {
                    if (std::wstring(path) == L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run")
                      access = wanted;
                    return ::RegCreateKeyExW(root, path, 0, nullptr, options, wanted, nullptr, key,
                                             disposition);
                  });
  expectStarts(0);
  EXPECT_EQ(access, static_cast<REGSAM>(KEY_ALL_ACCESS));
}

TEST_F(SetupProgramTest, HasTheUsersKeyMadeWhenItIsMissing) {
  run.removeTree();
  expectStarts(0);
  EXPECT_TRUE(run.exists());
}

TEST_F(SetupProgramTest, RunsBeforeTheSettingsAreLoaded) {
  startOldLauncher();
  settings.setNumber(L"marker", 1);
  library.replace("CreateProcessW",
                  [this](LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                         LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION) -> BOOL {
                    settings.setNumber(L"marker", 2);
                    return FALSE;
                  });
  EXPECT_EQ(Job(library, printer).number(L"marker"), 2);
}

// The program itself, in the driver's folder.
class RealSetupProgramTest : public SetupProgramTest {
 protected:
  RealSetupProgramTest() {
    startOldLauncher();
    EXPECT_TRUE(CopyFileW(standIn().c_str(), program.c_str(), FALSE)) << "error " << GetLastError();
    SetEnvironmentVariableW(L"NOTE_SETUP_FILE", note.c_str());
  }
  ~RealSetupProgramTest() override {
    SetEnvironmentVariableW(L"NOTE_SETUP_FILE", nullptr);
    DeleteFileW(program.c_str());
  }

  const std::wstring note = inFolder(L"setup.note");
};

TEST_F(RealSetupProgramTest, HasEndedWhenTheJobBegins) {
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_TRUE(fileExists(note));
}

TEST_F(RealSetupProgramTest, GetsItsCommandLine) {
  const Job job(library, printer);
  const std::string bytes = readFile(note);
  const std::wstring line(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
  EXPECT_EQ(line, commandLine());
}

TEST_F(RealSetupProgramTest, RunsForEveryJobUntilTheOldLauncherIsGone) {
  EXPECT_NE(Job(library, printer).handle(), 0U);
  DeleteFileW(note.c_str());
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_TRUE(fileExists(note));
  DeleteFileW(note.c_str());
  run.remove(L"twsmsnd.exe");
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_FALSE(fileExists(note));
}

TEST_F(RealSetupProgramTest, SucceedsWithoutAWord) {
  EXPECT_EQ(place(L"x"), inFolder(L"x.pdf"));
  EXPECT_TRUE(debuggerOutput.take().empty());
}

}  // namespace
}  // namespace quillpress::harness
