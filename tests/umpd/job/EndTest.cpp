// What happens when a document ends.

#include <string>
#include <vector>

#include "tests/umpd/job/JobTest.h"
#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Peer.h"

namespace quillpress::harness {
namespace {

class EndTest : public JobTest {
 protected:
  const std::wstring path = folder.file(L"Document.pdf");
};

TEST_F(EndTest, ClosesTheFile) {
  EXPECT_EQ(print(L"Document"), 1);
  const HANDLE alone = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(alone, INVALID_HANDLE_VALUE);
  CloseHandle(alone);
}

TEST_F(EndTest, RemovesTheSpooledJob) {
  Job job(library, printer, L"Document", 42);
  job.write("x");
  EXPECT_TRUE(queue.controls().empty());
  EXPECT_EQ(job.end(), 1);
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].printer, printer.handle());
  EXPECT_EQ(queue.controls()[0].job, 42U);
  EXPECT_EQ(queue.controls()[0].level, 0U);
  EXPECT_EQ(queue.controls()[0].command, 5U);
}

TEST_F(EndTest, CancelsTheSpooledJobOnWindows98) {
  pretend(library, kWindows98);
  EXPECT_EQ(print(L"Document"), 1);
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].command, 3U);
}

TEST_F(EndTest, RemovesAJobOfTheRealSpooler) {
  BOOL isRemoved = FALSE;
  library.replace("SetJobW", [&](HANDLE handle, DWORD id, DWORD level, LPBYTE data, DWORD command) -> BOOL {
    isRemoved = ::SetJobW(handle, id, level, data, command);
    return isRemoved;
  });
  const DWORD id = printer.beginDocument(L"Document");
  ASSERT_NE(id, 0U);
  Job job(library, printer, L"Document", id);
  EXPECT_EQ(job.write("x"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(isRemoved);
}

TEST_F(EndTest, SucceedsWhenTheSpooledJobCannotBeRemoved) {
  FAIL_EVERY(library, SetJobW, FALSE, ERROR_ACCESS_DENIED);
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(lastFile(), path);
}

TEST_F(EndTest, OfAJobWithoutBlocksDoesNothing) {
  const Handle finished(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(folder.files().empty());
  EXPECT_TRUE(queue.controls().empty());
  EXPECT_EQ(lastFile(), std::nullopt);
  EXPECT_EQ(lastName(), std::nullopt);
  EXPECT_EQ(WaitForSingleObject(finished.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(EndTest, OfAJobWithoutBlocksSendsTheLauncherNoMessage) {
  useLauncher();
  const Peer launcher(channelOf(user));
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_FALSE(launcher.receives(0));
}

TEST_F(EndTest, DoesNotStoreThatItMustNotPrintUnlessAsked) {
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(settings.type(L"DoPrint"), std::nullopt);
}

TEST_F(EndTest, SendsTheLauncherStopPrintAfterAFailedCreation) {
  useLauncher();
  settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
  settings.setNumber(L"showPrintStatusWin", 0);
  const Peer launcher(channelOf(user));
  EXPECT_EQ(print(L"Document"), 0);
  ASSERT_TRUE(launcher.receives());
  EXPECT_EQ(textOf(launcher.records()[0], field::kCommand), "stopprint");
  EXPECT_EQ(textOf(launcher.records()[0], field::kOutputPath), "Q:\\nowhere\\Document.pdf");
  EXPECT_EQ(queue.controls().size(), 1U);
}

TEST_F(EndTest, WorksInItsOrder) {
  std::vector<std::string> steps;
  HANDLE file = nullptr;
  library.replace("CreateFileW",
                  [&](LPCWSTR name, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                      DWORD disposition, DWORD attributes, HANDLE model) {
                    file = ::CreateFileW(name, access, sharing, security, disposition, attributes, model);
                    return file;
                  });
  queue.add({.id = 1, .document = "Document", .status = JOB_STATUS_ERROR, .position = 1});
  Job job(library, printer, L"Document", 1);
  ASSERT_EQ(job.write("x"), 1);

  library.replace("WaitForSingleObject", [&](HANDLE handle, DWORD milliseconds) -> DWORD {
    steps.emplace_back("wait");
    return ::WaitForSingleObject(handle, milliseconds);
  });
  library.replace("CloseHandle", [&](HANDLE handle) -> BOOL {
    // The system gives the same value again to what is opened later.
    if (handle == file) {
      steps.emplace_back("close the file");
      file = nullptr;
    }
    return ::CloseHandle(handle);
  });
  library.replace("DeleteFileW", [&](LPCWSTR name) -> BOOL {
    steps.push_back("delete " + narrow(name));
    return ::DeleteFileW(name);
  });
  library.replace("SetJobW", [&](HANDLE, DWORD, DWORD, LPBYTE, DWORD) -> BOOL {
    steps.emplace_back("remove the job");
    return TRUE;
  });
  library.replace("RegSetValueExW",
                  [&](HKEY key, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) -> LONG {
                    steps.push_back("store " + narrow(name));
                    return ::RegSetValueExW(key, name, 0, type, data, size);
                  });
  library.replace("OpenEventW", [&](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    steps.push_back("open " + narrow(name));
    return ::OpenEventW(access, inherit, name);
  });
  library.replace("SetEvent", [&](HANDLE event) -> BOOL {
    steps.emplace_back("signal");
    return ::SetEvent(event);
  });
  library.replace("ReleaseMutex", [&](HANDLE mutex) -> BOOL {
    steps.emplace_back("release");
    return ::ReleaseMutex(mutex);
  });
  const Handle finished(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(steps, (std::vector<std::string>{"wait", "close the file", "delete " + narrow(path),
                                             "remove the job", "store DocName", "store lastfile",
                                             "open Local\\FinishPrintEv", "signal", "release"}));
}

// The file of a job that the spooler has stopped is not handed on.
class JobStatusTest : public EndTest, public ::testing::WithParamInterface<DWORD> {
 protected:
  void printWithStatus() {
    queue.add({.id = 8, .document = "another", .status = 0, .position = 1});
    queue.add({.id = 1, .document = "Document", .status = GetParam(), .position = 2});
    EXPECT_EQ(print(L"Document"), 1);
    // In any case.
    EXPECT_EQ(queue.controls().size(), 1U);
    EXPECT_EQ(lastFile(), path);
  }
};

class BadJobStatusTest : public JobStatusTest {};
class GoodJobStatusTest : public JobStatusTest {};

TEST_P(BadJobStatusTest, DeletesTheFile) {
  printWithStatus();
  EXPECT_FALSE(fileExists(path));
}

TEST_P(BadJobStatusTest, IsNotLookedAtOnWindows98) {
  pretend(library, kWindows98);
  printWithStatus();
  EXPECT_TRUE(queue.listings().empty());
  EXPECT_TRUE(fileExists(path));
}

TEST_P(GoodJobStatusTest, KeepsTheFile) {
  printWithStatus();
  EXPECT_TRUE(fileExists(path));
}

// Paused, error, offline, paper out, blocked; and together with a harmless one.
INSTANTIATE_TEST_SUITE_P(Bits, BadJobStatusTest, ::testing::Values(0x1, 0x2, 0x20, 0x40, 0x200, 0x12, 0x263));

// Deleting, spooling, printing, printed, deleted, and what needs the user.
INSTANTIATE_TEST_SUITE_P(Bits, GoodJobStatusTest,
                         ::testing::Values(0, 0x4, 0x8, 0x10, 0x80, 0x100, 0x400, 0xD9C));

TEST_F(EndTest, KeepsTheFileOfAJobThatIsNotInTheQueue) {
  queue.add({.id = 2, .document = "another", .status = JOB_STATUS_ERROR, .position = 1});
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(fileExists(path));
}

TEST_F(EndTest, KeepsTheFileWhenTheQueueCannotBeListed) {
  queue.add({.id = 1, .document = "Document", .status = JOB_STATUS_ERROR, .position = 1});
  queue.failListing(ERROR_ACCESS_DENIED);
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(fileExists(path));
}

}  // namespace
}  // namespace quillpress::harness
