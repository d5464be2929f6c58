// How the jobs of all processes take turns.

#include <functional>
#include <string>
#include <vector>

#include "tests/umpd/job/JobMutex.h"
#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

class MutexTest : public JobTest {
 protected:
  // `call` waits for somebody who holds the mutex, and goes on when it is released.
  static void expectToWait(const std::function<void()>& call) {
    const JobMutexHolder holder;
    const Thread caller(call);
    EXPECT_FALSE(caller.endsWithin(200));
    holder.release();
    EXPECT_TRUE(caller.endsWithin(20000));
  }
};

TEST_F(MutexTest, DocStart2KWaitsForIt) {
  JobHandle handle = 0;
  std::wstring name = printer.name();
  expectToWait([&] { handle = driver.docStart2K(printer.handle(), 1, name.data(), name.data()); });
  EXPECT_EQ(driver.docEnd(handle), 1);
}

TEST_F(MutexTest, DocStartWaitsForIt) {
  JobHandle handle = 0;
  std::wstring name = printer.name();
  expectToWait([&] { handle = driver.docStart(name.data()); });
  EXPECT_EQ(driver.docEnd(handle), 1);
}

TEST_F(MutexTest, DocWriteWaitsForIt) {
  const Job job(library, printer);
  expectToWait([&] { EXPECT_EQ(job.write("x"), 1); });
}

TEST_F(MutexTest, DocWriteToTheSpoolerWaitsForIt) {
  settings.setNumber(L"passthru", 1);
  library.replace("WritePrinter", [](HANDLE, LPVOID, DWORD size, LPDWORD written) -> BOOL {
    *written = size;
    return TRUE;
  });
  const Job job(library, printer);
  expectToWait([&] { EXPECT_EQ(job.write("x"), 1); });
}

TEST_F(MutexTest, DocEndWaitsForIt) {
  Job job(library, printer);
  job.write("x");
  expectToWait([&] { EXPECT_EQ(job.end(), 1); });
}

TEST_F(MutexTest, IsHeldWhileTheFileIsWritten) {
  bool isFree = true;
  library.replace("WriteFile",
                  [&](HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) {
                    isFree = isJobMutexFree();
                    return ::WriteFile(file, bytes, size, written, overlapped);
                  });
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_FALSE(isFree);
}

TEST_F(MutexTest, IsFreeBetweenTheCallsOfAJob) {
  Job job(library, printer);
  EXPECT_TRUE(isJobMutexFree());
  job.write("x");
  EXPECT_TRUE(isJobMutexFree());
  job.end();
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(MutexTest, IsTakenOverFromAProcessThatDied) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kJobMutexName));
  {
    // Threads that end without releasing it abandon it, as processes do.
    const Thread owner([&] { EXPECT_EQ(WaitForSingleObject(mutex.get(), 0), WAIT_OBJECT_0); });
  }
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(isJobMutexFree());
}

// Whatever goes wrong, the next job can begin.
class ReleasedMutexTest : public MutexTest {};

TEST_F(ReleasedMutexTest, AfterAPrinterThatIsNotThere) {
  EXPECT_EQ(Job(library, Printer::newName()).handle(), 0U);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterAPrinterWithoutInformation) {
  library.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 0;
    return FALSE;
  });
  EXPECT_EQ(Job(library, printer.name()).handle(), 0U);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(isJobMutexFree());
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterALauncherThatDoesNotStart) {
  useLauncher();
  library.replace("Sleep", [](DWORD) {});
  library.replace("CreateProcessW",
                  [](LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                     LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION) -> BOOL { return FALSE; });
  const Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterALauncherThatIsNotThereOnNt4) {
  useLauncher();
  pretend(library, kWindowsNt4);
  const Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(isJobMutexFree(L"umdriver"));
}

TEST_F(ReleasedMutexTest, AfterANameThatCannotBeChosen) {
  settings.setText(L"DefaultExtension", L"x");
  writeFile(folder.file(L"Documentx"), "older");
  const Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_EQ(boxes.takeOne().caption, L"setOutputFilename failed");
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterAFileThatCannotBeCreated) {
  settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
  Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_TRUE(isJobMutexFree());
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterAFileWithoutAHandle) {
  FAIL_EVERY(library, CreateFileW, nullptr, ERROR_ACCESS_DENIED);
  const Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterAFullDisk) {
  library.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED) -> BOOL {
    *written = 0;
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
  });
  const Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_TRUE(isJobMutexFree());
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterABlockThatTheSpoolerRefuses) {
  settings.setNumber(L"passthru", 1);
  library.replace("WritePrinter", [](HANDLE, LPVOID, DWORD, LPDWORD written) -> BOOL {
    *written = 0;
    return FALSE;
  });
  Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_TRUE(isJobMutexFree());
  job.end();
  EXPECT_TRUE(isJobMutexFree());
}

TEST_F(ReleasedMutexTest, AfterCallsWithAnInvalidHandle) {
  EXPECT_EQ(driver.docWrite(0, "x", 1), 0);
  EXPECT_EQ(driver.docEnd(0), 0);
  EXPECT_EQ(boxes.take().size(), 2U);
  EXPECT_TRUE(isJobMutexFree());
}

// How the mutex comes to be.
class MutexCreationTest : public JobTest {
 protected:
  // No mutex can be created, only opened.
  void refuseCreation() { FAIL_EVERY(library, CreateMutexW, nullptr, ERROR_ACCESS_DENIED); }
};

TEST_F(MutexCreationTest, ThatFailsIsToldToTheDebugger) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kJobMutexName));
  refuseCreation();
  const Job job(library, printer);
  EXPECT_EQ(debuggerOutput.takeJoined().find(L"CreateMutex failed "), 0U);
}

TEST_F(MutexCreationTest, ThatFailsHasTheMutexOpenedByName) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kJobMutexName));
  refuseCreation();
  DWORD access = 0;
  std::vector<std::wstring> opened;
  library.replace("OpenMutexW", [&](DWORD wanted, BOOL inherit, LPCWSTR name) -> HANDLE {
    access = wanted;
    opened.emplace_back(name);
    return ::OpenMutexW(wanted, inherit, name);
  });
  Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(opened, std::vector<std::wstring>{kJobMutexName});
  EXPECT_EQ(access, static_cast<DWORD>(MUTEX_ALL_ACCESS));
  EXPECT_EQ(job.write("x"), 1);
  EXPECT_EQ(job.end(), 1);
}

TEST_F(MutexCreationTest, ThatFailsStillMakesJobsWait) {
  const JobMutexHolder holder;
  refuseCreation();
  const Thread caller([this] { EXPECT_EQ(print(L"Document"), 1); });
  EXPECT_FALSE(caller.endsWithin(200));
  holder.release();
  EXPECT_TRUE(caller.endsWithin(20000));
}

TEST_F(MutexCreationTest, ThatFailsWithoutAMutexOfTheNameGivesNoJob) {
  refuseCreation();
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  EXPECT_EQ(Job(library, printer.name()).handle(), 0U);
}

TEST_F(MutexCreationTest, UnderTheNameOfAnEventGivesNoJob) {
  const Handle squatter(CreateEventW(nullptr, FALSE, TRUE, kJobMutexName));
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  EXPECT_EQ(debuggerOutput.takeJoined().find(L"CreateMutex failed "), 0U);
}

class MutexReleaseTest : public JobTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  MutexReleaseTest() { pretend(library, GetParam()); }

  [[nodiscard]] static std::wstring name() {
    return GetParam().major >= 5 ? L"Global\\umdriver" : L"umdriver";
  }
};

TEST_P(MutexReleaseTest, IsCreatedWithoutAnOwner) {
  struct Call {
    std::wstring name;
    bool hasSecurity;
    BOOL isOwned;
  };
  std::vector<Call> calls;
  library.replace("CreateMutexW", [&](LPSECURITY_ATTRIBUTES security, BOOL isOwned, LPCWSTR mutex) -> HANDLE {
    calls.push_back({mutex, security != nullptr, isOwned});
    return ::CreateMutexW(security, isOwned, mutex);
  });
  const Job job(library, printer);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].name, name());
  EXPECT_EQ(calls[0].isOwned, FALSE);
  EXPECT_EQ(calls[0].hasSecurity, !GetParam().is9x());
}

TEST_P(MutexReleaseTest, MakesJobsWait) {
  const JobMutexHolder holder(name());
  const Thread caller([this] { EXPECT_EQ(print(L"Document"), 1); });
  EXPECT_FALSE(caller.endsWithin(100));
  holder.release();
  EXPECT_TRUE(caller.endsWithin(20000));
}

INSTANTIATE_TEST_SUITE_P(Releases, MutexReleaseTest, ::testing::ValuesIn(kEveryWindows));

}  // namespace
}  // namespace quillpress::harness
