// The mutex by which the jobs of all processes take turns.

#include <string>
#include <vector>

#include "tests/umpd/kernel/KernelTest.h"
#include "tests/umpd/launcher/support/Thread.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kName[] = L"Global\\umdriver";

class JobMutexTest : public KernelTest {
 protected:
  // Jobs of no launcher.
  JobMutexTest() { settings.setNumber(L"FinishPrintEv", 1); }

  // Counts what is taken and given back.
  void countTurns() {
    library.replace("WaitForSingleObject", [this](HANDLE handle, DWORD milliseconds) -> DWORD {
      waits.push_back(milliseconds);
      return ::WaitForSingleObject(handle, milliseconds);
    });
    library.replace("ReleaseMutex", [this](HANDLE handle) -> BOOL {
      ++releases;
      return ::ReleaseMutex(handle);
    });
  }

  // Looks at the mutex when the spooler is asked.
  void watchTheSpoolersTurn() {
    library.replace("GetPrinterA",
                    [this](HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
                      isHeldWhileAsked = jobMutexIsTaken();
                      return ::GetPrinterA(handle, level, buffer, size, needed);
                    });
  }

  void refuse(bool creation, bool opening) {
    if (creation) calls.refuseCreation = [](const std::wstring& name) { return name == kName; };
    if (opening) calls.refuseOpening = [](const std::wstring& name) { return name == kName; };
  }

  std::vector<DWORD> waits;
  unsigned releases = 0;
  bool isHeldWhileAsked = false;
};

TEST_F(JobMutexTest, IsTakenWithoutLimitAndGivenBackByEveryCall) {
  countTurns();
  Job job(library, printer);
  EXPECT_EQ(waits, std::vector<DWORD>{INFINITE});
  EXPECT_EQ(releases, 1U);
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(waits, std::vector<DWORD>(2, INFINITE));
  EXPECT_EQ(releases, 2U);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(waits, std::vector<DWORD>(3, INFINITE));
  EXPECT_EQ(releases, 3U);
}

TEST_F(JobMutexTest, IsGivenBackByAStartThatFails) {
  countTurns();
  library.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD) -> BOOL { return FALSE; });
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  EXPECT_EQ(Job(library, printer.name()).handle(), 0U);
  EXPECT_EQ(Job(library, Printer::newName()).handle(), 0U);
  EXPECT_EQ(boxes.take().size(), 3U);
  EXPECT_EQ(waits.size(), 3U);
  EXPECT_EQ(releases, 3U);
}

TEST_F(JobMutexTest, IsGivenBackByABlockThatFails) {
  countTurns();
  library.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) -> BOOL { return FALSE; });
  const Job job(library, printer);
  EXPECT_EQ(job.write("%!PS"), 0);
  EXPECT_EQ(waits.size(), 2U);
  EXPECT_EQ(releases, 2U);
}

TEST_F(JobMutexTest, IsHeldWhileTheSpoolerIsAsked) {
  watchTheSpoolersTurn();
  const Job job(library, printer);
  EXPECT_TRUE(isHeldWhileAsked);
  EXPECT_FALSE(jobMutexIsTaken());
}

TEST_F(JobMutexTest, IsHeldWhileABlockIsWritten) {
  const Job job(library, printer);
  bool isHeld = false;
  library.replace(
      "WriteFile",
      [&](HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) -> BOOL {
        isHeld = jobMutexIsTaken();
        return ::WriteFile(file, bytes, size, written, overlapped);
      });
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_TRUE(isHeld);
  EXPECT_FALSE(jobMutexIsTaken());
}

TEST_F(JobMutexTest, LetsAnotherJobWait) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kName));
  const Job job(library, printer);
  ASSERT_EQ(WaitForSingleObject(mutex.get(), INFINITE), WAIT_OBJECT_0);
  int result = -1;
  const Thread writer([&] { result = job.write("%!PS"); });
  EXPECT_FALSE(writer.endsWithin(300));
  ReleaseMutex(mutex.get());
  ASSERT_TRUE(writer.endsWithin(10000));
  EXPECT_EQ(result, 1);
}

TEST_F(JobMutexTest, OfAProcessThatDiedIsTaken) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kName));
  EXPECT_EQ(onAnotherThread<DWORD>([&] { return WaitForSingleObject(mutex.get(), INFINITE); }),
            WAIT_OBJECT_0);
  Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_FALSE(jobMutexIsTaken());
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(job.end(), 1);
}

TEST_F(JobMutexTest, ThatCannotBeMadeIsReportedToTheDebugger) {
  refuse(true, false);
  const Job job(library, printer);
  EXPECT_EQ(debuggerOutput.takeJoined(), L"CreateMutex failed " + systemMessage(ERROR_ACCESS_DENIED));
}

TEST_F(JobMutexTest, ThatCannotBeMadeIsOpenedByItsName) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kName));
  refuse(true, false);
  Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  const auto openings = calls.openingsOf(kName);
  ASSERT_FALSE(openings.empty());
  for (const KernelCalls::Opening& opening : openings) {
    EXPECT_EQ(opening.kind, ObjectKind::kMutex);
    EXPECT_EQ(opening.access, kAllOfMutex);
    EXPECT_FALSE(opening.isInherited);
  }
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_FALSE(jobMutexIsTaken());
}

TEST_F(JobMutexTest, ThatWasOpenedByItsNameServesLikeOneMade) {
  const Handle mutex(CreateMutexW(nullptr, FALSE, kName));
  refuse(true, false);
  watchTheSpoolersTurn();
  const Job job(library, printer);
  EXPECT_TRUE(isHeldWhileAsked);
}

TEST_F(JobMutexTest, ThatIsMadeIsNotOpenedByItsName) {
  Job job(library, printer);
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(calls.openingsOf(kName).empty());
}

TEST_F(JobMutexTest, WithoutAnyNoJobBegins) {
  refuse(true, true);
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  EXPECT_EQ(Job(library, printer.name()).handle(), 0U);
}

TEST_F(JobMutexTest, OfAnotherKindOfObjectIsNone) {
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, kName));
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  EXPECT_EQ(debuggerOutput.takeJoined(), L"CreateMutex failed " + systemMessage(ERROR_INVALID_HANDLE));
}

TEST_F(JobMutexTest, ClosesWithTheJob) {
  { const Job job(library, printer); }
  EXPECT_EQ(Handle(OpenMutexW(SYNCHRONIZE, FALSE, kName)), nullptr);
}

}  // namespace
}  // namespace quillpress::harness
