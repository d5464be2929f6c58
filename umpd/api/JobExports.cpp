// The life of a job: start, blocks, end.

#include <quillpress/driver.h>

#include <memory>

#include "umpd/api/Guarded.h"
#include "umpd/api/JobTable.h"
#include "umpd/job/UmDriver.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"

namespace quillpress::driver {

extern "C" {

unsigned long QUILLPRESS_CALL DocStart(wchar_t* printerName) {
  if (printerName == nullptr) {
    // Kept: the text ends in a line break, as if it were a trace
    // (StartTest.WithoutANameShowsABoxAndGivesNoJob).
    showErrorBox("DocStart - invalid printer name %s\n", "(null)");
    return 0;
  }
  return guarded(JobHandle{0}, [&]() -> JobHandle {
    auto job = std::make_unique<UmDriver>();
    // A job that has any other flag after its start is not one that blocks can be written to.
    if (!job->init(nullptr, 0, printerName) || job->stateFlags() != UmDriver::kInitialised) return 0;
    return JobTable::add(std::move(job));
  });
}

unsigned long QUILLPRESS_CALL DocStart2K(void* printer, unsigned long jobId, wchar_t* printerName,
                                         wchar_t* documentName) {
  QUILLPRESS_TRACE(L"Printer handle=%d, jobId=%d, printerName=[%s], docName=[%s]\n", printer, jobId,
                   printerName, documentName);
  return guarded(JobHandle{0}, [&]() -> JobHandle {
    // The spooler of Windows 2000 and later tells the document's name, so the queue need not be searched for
    // it.
    auto job = std::make_unique<UmDriver2k>();
    if (!job->init(printer, jobId, documentName) || job->stateFlags() != UmDriver::kInitialised) return 0;
    return JobTable::add(std::move(job));
  });
}

int QUILLPRESS_CALL DocWrite(unsigned long job, const void* bytes, unsigned long count) {
  UmDriver* const driver = validJob(job, "DocWrite invalid parms");
  return driver != nullptr && writeBlock(*driver, bytes, count) ? 1 : 0;
}

int QUILLPRESS_CALL DocEnd(unsigned long job) {
  UmDriver* const driver = validJob(job, "DocEnd invalid parms");
  if (driver == nullptr) return 0;
  // The handle goes whatever the end says: the caller may not use it again, and nobody else would free the
  // job.
  const bool isEnded = guarded(false, [&] { return driver->endDoc(); });
  JobTable::remove(job);
  return isEnded ? 1 : 0;
}

}  // extern "C"

}  // namespace quillpress::driver
