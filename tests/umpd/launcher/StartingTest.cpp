// A launcher that is not there when a job begins: how it is started, how often, and what the user is told.

#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/launcher/support/HandOverTest.h"
#include "tests/umpd/launcher/support/Process.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kCannotStart[] = L"Error:twsmsnd.exe is not running - and attempt to start it failed.";
constexpr wchar_t kNotRunning[] =
    L"Error:twsmsnd.exe is not running.  Please run it before printing to Quillpress.";

class StartingTest : public HandOverTest {
 protected:
  struct Start {
    std::wstring application;
    std::wstring commandLine;
    bool inherits = true;
    DWORD startupFlags = 0;
    WORD show = SW_SHOW;
  };

  StartingTest() {
    library.replace("CreateProcessW",
                    [this](LPCWSTR application, LPWSTR commandLine, LPSECURITY_ATTRIBUTES,
                           LPSECURITY_ATTRIBUTES, BOOL inherit, DWORD, LPVOID, LPCWSTR,
                           LPSTARTUPINFOW startup, LPPROCESS_INFORMATION process) -> BOOL {
                      starts.push_back({application == nullptr ? L"" : application, commandLine,
                                        inherit != FALSE, startup->dwFlags, startup->wShowWindow});
                      if (!canStart) {
                        SetLastError(ERROR_FILE_NOT_FOUND);
                        return FALSE;
                      }
                      *process = {CreateEventW(nullptr, TRUE, FALSE, nullptr),
                                  CreateEventW(nullptr, TRUE, FALSE, nullptr), 1234, 5678};
                      handles = *process;
                      return TRUE;
                    });
    library.replace("Sleep", [this](DWORD milliseconds) {
      pauses.push_back(milliseconds);
      if (handles.hProcess != nullptr) {
        DWORD flags = 0;
        leaked = leaked || GetHandleInformation(handles.hProcess, &flags) != 0 ||
                 GetHandleInformation(handles.hThread, &flags) != 0;
      }
      if (pauses.size() == readyAfter) peer.emplace(channel);
    });
  }

  bool canStart = true;
  std::size_t readyAfter = 0;  // the pause in which the launcher comes to life; 0 for never
  std::vector<Start> starts;
  std::vector<DWORD> pauses;
  PROCESS_INFORMATION handles{};
  bool leaked = false;
  std::optional<Peer> peer;
};

TEST_F(StartingTest, ALauncherThatListensIsNotStarted) {
  peer.emplace(channel);
  print(L"Document");
  EXPECT_TRUE(starts.empty());
  EXPECT_TRUE(pauses.empty());
  EXPECT_EQ(peer->records().size(), 2U);
}

TEST_F(StartingTest, ItsPathIsProgramAndCommandLine) {
  readyAfter = 1;
  const DriverFolder driver;
  print(L"Document");
  ASSERT_EQ(starts.size(), 1U);
  EXPECT_EQ(starts[0].application, driver.path() + L"twsmsnd.exe");
  EXPECT_EQ(starts[0].commandLine, driver.path() + L"twsmsnd.exe");
}

TEST_F(StartingTest, ItInheritsNothingAndIsHidden) {
  readyAfter = 1;
  print(L"Document");
  ASSERT_EQ(starts.size(), 1U);
  EXPECT_FALSE(starts[0].inherits);
  EXPECT_NE(starts[0].startupFlags & STARTF_USESHOWWINDOW, 0U);
  EXPECT_EQ(starts[0].show, SW_HIDE);
}

TEST_F(StartingTest, TheHandlesOfTheProcessAreClosed) {
  readyAfter = 3;
  print(L"Document");
  EXPECT_EQ(starts.size(), 3U);
  EXPECT_FALSE(leaked);
}

TEST_F(StartingTest, AfterEachTryThereIsAPause) {
  for (const std::size_t tries : {1U, 2U, 5U, 9U, 10U}) {
    starts.clear();
    pauses.clear();
    peer.reset();
    readyAfter = tries;
    print(L"Document");
    EXPECT_EQ(starts.size(), tries);
    EXPECT_EQ(pauses, std::vector<DWORD>(tries, 540));
    ASSERT_TRUE(peer);
    ASSERT_EQ(peer->records().size(), 2U);
    EXPECT_EQ(textOf(peer->records()[0], field::kCommand), "startprint");
  }
}

TEST_F(StartingTest, TheTenthTryIsTheLast) {
  readyAfter = 11;
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_EQ(starts.size(), 10U);
  EXPECT_EQ(pauses, std::vector<DWORD>(10, 540));
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, kCannotStart);
  EXPECT_TRUE(box.wide);
  EXPECT_EQ(box.owner, nullptr);
  EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
  EXPECT_TRUE(folder.files().empty());
}

TEST_F(StartingTest, AFailedStartDoesNotEndTheTries) {
  canStart = false;
  readyAfter = 4;
  print(L"Document");
  EXPECT_EQ(starts.size(), 4U);
  EXPECT_EQ(pauses, std::vector<DWORD>(4, 540));
  EXPECT_EQ(peer->records().size(), 2U);
}

TEST_F(StartingTest, TheBoxExplainsTheLastFailure) {
  canStart = false;
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, kCannotStart);
  // The mutex was looked for after the start failed: in both cases there was no such thing.
  EXPECT_FALSE(box.text.empty());
  EXPECT_NE(box.text, L"Error string not found");
}

TEST_F(StartingTest, AfterTheFailureOtherJobsCanGoOn) {
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_FALSE(jobMutexIsTaken());
}

TEST_F(StartingTest, AJobThatHasFailedDoesNotTryAgain) {
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_EQ(job.write("more"), 0);
  EXPECT_EQ(starts.size(), 10U);
  peer.emplace(channel);
  EXPECT_EQ(job.write("more"), 0);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(peer->records().empty());
  EXPECT_TRUE(folder.files().empty());
}

TEST_F(StartingTest, TheNextJobTriesAgain) {
  Job failed(library, printer, L"Document", 1);
  EXPECT_EQ(failed.write("%!PS"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  readyAfter = 12;
  print(L"Another");
  EXPECT_EQ(starts.size(), 12U);
  EXPECT_EQ(peer->records().size(), 2U);
}

TEST_F(StartingTest, ALauncherThatComesBeforeTheTryIsNotStartedTwice) {
  peer.emplace(channel);
  bool asked = false;
  library.replace("OpenMutexW", [&](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    const bool isFirst = name == channel.mutex() && !std::exchange(asked, true);
    if (!isFirst) return ::OpenMutexW(access, inherit, name);
    SetLastError(ERROR_FILE_NOT_FOUND);
    return nullptr;
  });
  print(L"Document");
  EXPECT_TRUE(starts.empty());
  EXPECT_EQ(pauses, std::vector<DWORD>{540});
  EXPECT_EQ(peer->records().size(), 2U);
}

TEST_F(StartingTest, WindowsNt4DoesNotStartIt) {
  pretend(library, kWindowsNt4);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_TRUE(starts.empty());
  EXPECT_TRUE(pauses.empty());
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, kNotRunning);
  EXPECT_TRUE(box.wide);
  EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
  EXPECT_TRUE(folder.files().empty());
}

TEST_F(StartingTest, WindowsNt4UsesOneThatListens) {
  pretend(library, kWindowsNt4);
  peer.emplace(channelOf(user, false));
  print(L"Document");
  EXPECT_EQ(peer->records().size(), 2U);
}

class StartingByReleaseTest : public StartingTest, public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(StartingByReleaseTest, TheFolderIsThatOfTheDriverVersion) {
  pretend(library, GetParam());
  const DriverFolder driver(GetParam());
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_EQ(boxes.takeOne().caption, kCannotStart);
  ASSERT_EQ(starts.size(), 10U);
  EXPECT_EQ(starts[9].application, driver.path() + L"twsmsnd.exe");
}

INSTANTIATE_TEST_SUITE_P(AllThatStartIt, StartingByReleaseTest,
                         ::testing::Values(kWindows98, kWindows2000, kWindowsXp, kWindowsVista, kWindows7,
                                           kWindows10),
                         ::testing::PrintToStringParamName());

class LongFolderTest : public StartingTest {
 protected:
  // The path of the launcher gets this length.
  void lengthenPath(std::size_t length) {
    const std::wstring behind = L"\\3\\twsmsnd.exe";
    directory_ = L"C:\\" + std::wstring(length - behind.size() - 3, L'd');
    library.replace("GetPrinterDriverDirectoryW",
                    [this](LPWSTR, LPWSTR, DWORD, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
                      *needed = static_cast<DWORD>((directory_.size() + 1) * sizeof(wchar_t));
                      if (size < *needed) {
                        SetLastError(ERROR_INSUFFICIENT_BUFFER);
                        return FALSE;
                      }
                      directory_.copy(reinterpret_cast<wchar_t*>(buffer), directory_.size());
                      reinterpret_cast<wchar_t*>(buffer)[directory_.size()] = L'\0';
                      return TRUE;
                    });
  }

 private:
  std::wstring directory_;
};

TEST_F(LongFolderTest, APathOf259CharactersIsStarted) {
  lengthenPath(259);
  readyAfter = 1;
  print(L"Document");
  ASSERT_EQ(starts.size(), 1U);
  EXPECT_EQ(starts[0].application.size(), 259U);
}

TEST_F(LongFolderTest, APathOf260CharactersCannotBeStarted) {
  lengthenPath(260);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_TRUE(starts.empty());
  EXPECT_EQ(pauses, std::vector<DWORD>(10, 540));
  EXPECT_EQ(boxes.takeOne().caption, kCannotStart);
}

TEST_F(StartingTest, WithoutAStatusWindowItIsStartedAllTheSame) {
  settings.setNumber(L"showPrintStatusWin", 0);
  readyAfter = 1;
  print(L"Document");
  EXPECT_EQ(starts.size(), 1U);
  ASSERT_EQ(peer->records().size(), 1U);
  EXPECT_EQ(textOf(peer->records()[0], field::kCommand), "stopprint");
}

TEST_F(StartingTest, OnlyTheFirstBlockLooksForIt) {
  readyAfter = 1;
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 1);
  peer.reset();
  EXPECT_EQ(job.write("more"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(starts.size(), 1U);
  EXPECT_EQ(readFile(folder.file(L"Document.pdf")), "%!PSmore");
}

}  // namespace
}  // namespace quillpress::harness
