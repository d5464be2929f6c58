#include "tests/umpd/harness/HandleCount.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "tests/unit/win32/support/NoteStart.h"
#include "umpd/win32/ProgramRunner.h"

namespace quillpress::driver {
namespace {

// What CreateProcessW was asked for.
struct Creation {
  std::wstring application;
  std::wstring commandLine;
  bool inherits = false;
  DWORD flags = 0;
  std::optional<std::wstring> folder;
  DWORD startupFlags = 0;
  WORD show = 0;
};

class ProgramRunnerTest : public classes::ClassTest {
 protected:
  ProgramRunnerTest() {
    auto* const create = classes::real<decltype(CreateProcessW)>(L"kernel32.dll", "CreateProcessW");
    imports.replace(
        "CreateProcessW",
        [this, create](LPCWSTR application, LPWSTR commandLine, LPSECURITY_ATTRIBUTES process,
                       LPSECURITY_ATTRIBUTES thread, BOOL inherit, DWORD flags, LPVOID environment,
                       LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION result) -> BOOL {
          creation = {application,  commandLine,      inherit != FALSE,    flags,
                      std::nullopt, startup->dwFlags, startup->wShowWindow};
          if (folder != nullptr) creation.folder = folder;
          EXPECT_EQ(environment, nullptr);
          return create(application, commandLine, process, thread, inherit, flags, environment, folder,
                        startup, result);
        });
  }

  // The program with an argument that has a blank in it, waited for.
  static ProgramRun noted() {
    ProgramRun run;
    run.application = classes::NoteStart::program();
    run.commandLine = classes::NoteStart::program() + L" -printer=\"My printer\"";
    run.waitForEnd = true;
    return run;
  }

  Creation creation;
  classes::NoteStart note;
};

TEST_F(ProgramRunnerTest, StartsTheCommandLine) {
  EXPECT_TRUE(runProgram(noted()));
  EXPECT_EQ(note.commandLine(), classes::NoteStart::program() + L" -printer=\"My printer\"");
}

TEST_F(ProgramRunnerTest, TheApplicationIsNamedToo) {
  EXPECT_TRUE(runProgram(noted()));
  EXPECT_EQ(creation.application, classes::NoteStart::program());
}

TEST_F(ProgramRunnerTest, ItIsDetachedOfNormalPriorityAndInheritsNothing) {
  EXPECT_TRUE(runProgram(noted()));
  EXPECT_EQ(creation.flags, static_cast<DWORD>(DETACHED_PROCESS | NORMAL_PRIORITY_CLASS));
  EXPECT_FALSE(creation.inherits);
}

TEST_F(ProgramRunnerTest, TellsTheExitCode) {
  note.setExitCode(42);
  unsigned long exitCode = 7;
  EXPECT_TRUE(runProgram(noted(), &exitCode));
  EXPECT_EQ(exitCode, 42U);
}

TEST_F(ProgramRunnerTest, WithoutWaitingThereIsNoExitCode) {
  ProgramRun run = noted();
  run.waitForEnd = false;
  unsigned long exitCode = 7;
  bool hasWaited = false;
  auto* const wait = classes::real<decltype(WaitForSingleObject)>(L"kernel32.dll", "WaitForSingleObject");
  imports.replace("WaitForSingleObject", [&, wait](HANDLE handle, DWORD milliseconds) -> DWORD {
    hasWaited = true;
    return wait(handle, milliseconds);
  });
  EXPECT_TRUE(runProgram(run, &exitCode));
  imports.restore("WaitForSingleObject");
  EXPECT_FALSE(hasWaited);
  EXPECT_EQ(exitCode, 7U);
  for (int i = 0; i < 500 && !note.hasRun(); ++i) Sleep(20);
  EXPECT_TRUE(note.hasRun());
  // The folder of the note can only go after the program.
  Sleep(200);
}

TEST_F(ProgramRunnerTest, RunsInTheCallersFolder) {
  wchar_t folder[1024] = {};
  GetCurrentDirectoryW(1024, folder);
  EXPECT_TRUE(runProgram(noted()));
  EXPECT_EQ(creation.folder, std::nullopt);
  EXPECT_EQ(note.workingFolder(), folder);
}

TEST_F(ProgramRunnerTest, OrInTheOneGiven) {
  ProgramRun run = noted();
  run.workingFolder = L"C:\\windows";
  EXPECT_TRUE(runProgram(run));
  EXPECT_EQ(creation.folder, L"C:\\windows");
  EXPECT_EQ(note.workingFolder(), L"C:\\windows");
}

TEST_F(ProgramRunnerTest, TheStateOfItsWindowIsItsOwn) {
  EXPECT_TRUE(runProgram(noted()));
  EXPECT_EQ(creation.startupFlags, 0U);
}

TEST_F(ProgramRunnerTest, OrTheOneGiven) {
  for (const int state : {0, 1, 3, 10}) {
    ProgramRun run = noted();
    run.showState = state;
    EXPECT_TRUE(runProgram(run));
    EXPECT_EQ(creation.startupFlags, static_cast<DWORD>(STARTF_USESHOWWINDOW));
    EXPECT_EQ(creation.show, state);
  }
}

TEST_F(ProgramRunnerTest, TheStateElevenIsPassedAsZero) {
  ProgramRun run = noted();
  run.showState = 11;
  EXPECT_TRUE(runProgram(run));
  EXPECT_EQ(creation.startupFlags, static_cast<DWORD>(STARTF_USESHOWWINDOW));
  EXPECT_EQ(creation.show, 0);
}

TEST_F(ProgramRunnerTest, AFailureIsToldToTheDebugger) {
  ProgramRun run;
  run.application = L"C:\\no such folder\\program.exe";
  run.commandLine = L"C:\\no such folder\\program.exe -a \x00C4\x4E2D 100%s";
  run.waitForEnd = true;
  unsigned long exitCode = 7;
  EXPECT_FALSE(runProgram(run, &exitCode));
  EXPECT_EQ(takeDebuggerOutput(), L"CreateProcess failed.  Cmd Line : " + run.commandLine + L"\n");
  EXPECT_EQ(exitCode, 7U);
}

TEST_F(ProgramRunnerTest, ASuccessIsNot) {
  EXPECT_TRUE(runProgram(noted()));
  EXPECT_EQ(takeDebuggerOutput(), L"");
}

TEST_F(ProgramRunnerTest, ItsHandlesAreClosed) {
  EXPECT_TRUE(runProgram(noted()));
  const unsigned long before = harness::handleCount();
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(runProgram(noted()));
  harness::expectNoMoreHandlesThan(before);
}

}  // namespace
}  // namespace quillpress::driver
