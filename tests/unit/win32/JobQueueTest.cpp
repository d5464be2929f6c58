#include "tests/umpd/harness/Printer.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/spooler/JobQueue.h"

namespace quillpress::driver {
namespace {

// A document that the spooler is receiving.
class OpenDocument {
 public:
  OpenDocument(const harness::Printer& printer, const std::wstring& name)
      : printer_(printer.handle()), id_(printer.beginDocument(name)) {}
  ~OpenDocument() { AbortPrinter(printer_); }
  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;

  [[nodiscard]] DWORD id() const { return id_; }

 private:
  HANDLE printer_;
  DWORD id_;
};

class JobQueueTest : public classes::ClassTest {
 protected:
  // The printer counts so many jobs.
  void countJobs(DWORD count) {
    auto* const ask = classes::real<decltype(GetPrinterA)>(L"winspool.drv", "GetPrinterA");
    imports.replace("GetPrinterA",
                    [=](HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
                      if (ask(handle, level, buffer, size, needed) == FALSE) return FALSE;
                      reinterpret_cast<PRINTER_INFO_2A*>(buffer)->cJobs = count;
                      return TRUE;
                    });
  }

  // The spooler lists these records.
  void listJobs(const std::vector<JOB_INFO_2A>& records) {
    imports.replace("EnumJobsA",
                    [this, records](HANDLE handle, DWORD from, DWORD count, DWORD level, LPBYTE buffer,
                                    DWORD size, LPDWORD needed, LPDWORD listed) -> BOOL {
                      EXPECT_EQ(handle, printer.handle());
                      EXPECT_EQ(from, 0U);
                      EXPECT_EQ(level, 2U);
                      asked = count;
                      *needed = static_cast<DWORD>(records.size() * sizeof(JOB_INFO_2A));
                      *listed = 0;
                      if (size < *needed) {
                        SetLastError(ERROR_INSUFFICIENT_BUFFER);
                        return FALSE;
                      }
                      std::copy(records.begin(), records.end(), reinterpret_cast<JOB_INFO_2A*>(buffer));
                      *listed = static_cast<DWORD>(records.size());
                      return TRUE;
                    });
  }

  static JOB_INFO_2A job(DWORD id, char* document, DWORD position, DWORD status = 0) {
    JOB_INFO_2A record{};
    record.JobId = id;
    record.pDocument = document;
    record.Position = position;
    record.Status = status;
    return record;
  }

  char first[6] = "first";
  char second[10] = "second \xC4\x80";  // the last two in the ANSI code page: A with dots, the euro sign
  DWORD asked = 0;                      // the number of jobs that the spooler was last asked for
  const harness::Printer printer{{L"", L"\\\\server\\queue"}};
};

TEST_F(JobQueueTest, APrinterWithoutJobsIsNotAskedForThem) {
  imports.replace("EnumJobsA", [](HANDLE, DWORD, DWORD, DWORD, LPBYTE, DWORD, LPDWORD, LPDWORD) -> BOOL {
    ADD_FAILURE();
    return FALSE;
  });
  EXPECT_TRUE(readJobQueue(printer.handle()).empty());
  EXPECT_TRUE(readJobQueue(nullptr).empty());
}

TEST_F(JobQueueTest, JobsAreRead) {
  countJobs(2);
  listJobs({job(7, first, 1, 0x20), job(8, second, 2)});
  const std::vector<QueuedJob> jobs = readJobQueue(printer.handle());
  ASSERT_EQ(jobs.size(), 2U);
  EXPECT_EQ(jobs[0].id, 7U);
  EXPECT_EQ(jobs[0].documentName, L"first");
  EXPECT_EQ(jobs[0].status, 0x20U);
  EXPECT_EQ(jobs[0].position, 1);
  EXPECT_EQ(jobs[1].id, 8U);
  EXPECT_EQ(jobs[1].documentName, L"second \x00C4\x20AC");
}

TEST_F(JobQueueTest, OneJobMoreThanCountedIsAskedFor) {
  countJobs(2);
  listJobs({job(7, first, 1), job(8, second, 2)});
  EXPECT_EQ(readJobQueue(printer.handle()).size(), 2U);
  EXPECT_EQ(asked, 3U);
}

TEST_F(JobQueueTest, CountedJobsThatAreNotListedAreZero) {
  countJobs(3);
  listJobs({job(7, first, 1)});
  const std::vector<QueuedJob> jobs = readJobQueue(printer.handle());
  ASSERT_EQ(jobs.size(), 3U);
  EXPECT_EQ(jobs[0].id, 7U);
  for (const std::size_t i : {1U, 2U}) {
    EXPECT_EQ(jobs[i].id, 0U);
    EXPECT_EQ(jobs[i].position, 0);
    EXPECT_EQ(jobs[i].status, 0U);
    EXPECT_EQ(jobs[i].documentName, L"");
  }
}

TEST_F(JobQueueTest, ListedJobsThatAreNotCountedAreLeftOut) {
  countJobs(1);
  listJobs({job(7, first, 1), job(8, second, 2)});
  const std::vector<QueuedJob> jobs = readJobQueue(printer.handle());
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(jobs[0].id, 7U);
}

TEST_F(JobQueueTest, AJobMayHaveNoDocument) {
  countJobs(1);
  listJobs({job(7, nullptr, 1)});
  EXPECT_EQ(currentPrintJob(printer.handle()).documentName, L"");
  EXPECT_EQ(currentPrintJob(printer.handle()).id, 7U);
}

TEST_F(JobQueueTest, ARefusedSizeGivesNoJobs) {
  countJobs(1);
  FAIL_EVERY(imports, EnumJobsA, FALSE, ERROR_ACCESS_DENIED);
  EXPECT_TRUE(readJobQueue(printer.handle()).empty());
  EXPECT_EQ(currentPrintJob(printer.handle()).id, 0U);
  EXPECT_TRUE(isJobStatusOk(printer.handle(), 7));
}

TEST_F(JobQueueTest, TheCurrentJobIsTheLastInTheQueue) {
  countJobs(2);
  listJobs({job(7, first, 2), job(8, second, 1)});
  EXPECT_EQ(currentPrintJob(printer.handle()).id, 7U);
  EXPECT_EQ(currentPrintJob(printer.handle()).documentName, L"first");
}

TEST_F(JobQueueTest, WithoutJobsThereIsNoCurrentOne) {
  EXPECT_EQ(currentPrintJob(printer.handle()).id, 0U);
  EXPECT_EQ(currentPrintJob(printer.handle()).documentName, L"");
}

TEST_F(JobQueueTest, AJobsStatusIsThatInTheQueue) {
  countJobs(2);
  listJobs({job(7, first, 1, 0x2), job(8, second, 2, 0x4)});
  EXPECT_FALSE(isJobStatusOk(printer.handle(), 7));
  EXPECT_TRUE(isJobStatusOk(printer.handle(), 8));
  EXPECT_TRUE(isJobStatusOk(printer.handle(), 9));
}

TEST_F(JobQueueTest, TheDocumentsNameIsTheJobsOwn) {
  const OpenDocument document(printer, L"Report \x00C4\x4E2D");
  EXPECT_EQ(readDocumentName(printer.handle(), document.id()), L"Report \x00C4\x4E2D");
}

TEST_F(JobQueueTest, AnUnknownJobHasNoDocument) {
  EXPECT_EQ(readDocumentName(printer.handle(), 4711), std::nullopt);
  EXPECT_EQ(readDocumentName(nullptr, 1), std::nullopt);
}

TEST_F(JobQueueTest, RemovingAJobDeletesItAndOn9xCancelsIt) {
  for (const harness::WindowsRelease& release : harness::kEveryWindows) {
    pretend(release);
    int count = 0;
    imports.replace("SetJobW",
                    [&](HANDLE handle, DWORD id, DWORD level, LPBYTE record, DWORD command) -> BOOL {
                      ++count;
                      EXPECT_EQ(handle, printer.handle());
                      EXPECT_EQ(id, 7U);
                      EXPECT_EQ(level, 0U);
                      EXPECT_EQ(record, nullptr);
                      EXPECT_EQ(command, release.is9x() ? 3U : 5U) << release;
                      return TRUE;
                    });
    removeJob(printer.handle(), 7);
    EXPECT_EQ(count, 1);
  }
}

}  // namespace
}  // namespace quillpress::driver
