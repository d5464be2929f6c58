#include "umpd/spooler/JobQueue.h"

#include <algorithm>

#include "umpd/rules/Trace.h"
#include "umpd/win32/Resources.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
// A spooler that counts more jobs than this is not believed.
constexpr DWORD kMostJobs = 1'000'000;

DWORD countJobs(HANDLE printer) {
  PrinterInformation information;
  const PRINTER_INFO_2A* record = information.read(printer);
  return record == nullptr ? 0 : std::min(record->cJobs, kMostJobs);
}

QueuedJob toQueuedJob(const JOB_INFO_2A& record) {
  return {record.JobId, record.pDocument == nullptr ? std::wstring() : fromAnsi(record.pDocument),
          record.Status, static_cast<std::int32_t>(record.Position)};
}
}  // namespace

std::vector<QueuedJob> readJobQueue(HANDLE printer) {
  QUILLPRESS_TRACE(L">getAllJobs \n");
  const DWORD count = countJobs(printer);
  QUILLPRESS_TRACE(L"numjobs = %d\n", count);
  if (count == 0) return {};

  DWORD needed = 0;
  DWORD listed = 0;
  // The last error is read at once, before any other call can change it.
  if (EnumJobsA(printer, 0, count + 1, 2, nullptr, 0, &needed, &listed) == 0 &&
      GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    return {};
  }
  std::vector<BYTE> buffer;
  if (!tryResize(buffer, needed)) return {};
  listed = 0;
  if (EnumJobsA(printer, 0, count + 1, 2, buffer.data(), needed, &needed, &listed) == 0) return {};

  // A job may have come or gone since the printer counted.
  std::vector<QueuedJob> jobs(count);
  const auto room = static_cast<DWORD>(buffer.size() / sizeof(JOB_INFO_2A));
  const auto* records = reinterpret_cast<const JOB_INFO_2A*>(buffer.data());
  std::transform(records, records + std::min({listed, count, room}), jobs.begin(), toQueuedJob);
  QUILLPRESS_TRACE(L"<getAllJobs numjobs = %d\n", count);
  return jobs;
}

QueuedJob currentPrintJob(HANDLE printer) {
  const std::vector<QueuedJob> jobs = readJobQueue(printer);
  // Kept: "returend" and "numjobss", by which the field searches traces (TraceTest.TextsKeepTheirSpelling).
  if (jobs.empty()) QUILLPRESS_TRACE(L"getAllJobs returend 0\n");
  QUILLPRESS_TRACE(L">getCurrentPrintJobDocName - numjobss %d\n", jobs.size());
  const QueuedJob* last = lastInQueue(jobs);
  if (last == nullptr) return {};
  QUILLPRESS_TRACE(L"<getCurrentPrintJobDocName - job %d %s\n", last->id, last->documentName);
  return *last;
}

bool isJobStatusOk(HANDLE printer, DWORD jobId) {
  return isStatusOk(readJobQueue(printer), jobId);
}

std::optional<std::wstring> readDocumentName(HANDLE printer, DWORD jobId) {
  DWORD needed = 0;
  GetJobW(printer, jobId, 2, nullptr, 0, &needed);
  // A size that holds no record at all means that the spooler has not answered.
  if (needed < sizeof(JOB_INFO_2W)) return std::nullopt;
  std::vector<BYTE> buffer;
  if (!tryResize(buffer, needed)) return std::nullopt;
  if (GetJobW(printer, jobId, 2, buffer.data(), needed, &needed) == 0) return std::nullopt;
  const auto* record = reinterpret_cast<const JOB_INFO_2W*>(buffer.data());
  return record->pDocument == nullptr ? std::wstring() : std::wstring(record->pDocument);
}

void removeJob(HANDLE printer, DWORD jobId) {
  // The 9x family knows cancelling only, which has gone out of use with NT 4.0.
  const DWORD command = windowsVersion().is9x() ? JOB_CONTROL_CANCEL : JOB_CONTROL_DELETE;
  SetJobW(printer, jobId, 0, nullptr, command);
}
}  // namespace quillpress::driver
