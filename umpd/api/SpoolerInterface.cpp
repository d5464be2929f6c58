#include "umpd/api/SpoolerInterface.h"

#include <memory>

#include "postscript/lib/base/Guarded.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"

namespace quillpress::driver {
JobHandle DrvSplStartDoc(void* printer, unsigned long jobId) {
  QUILLPRESS_TRACE(L"DrvSplStartDoc hPrinter=%d\n", printer);
  return guarded(JobHandle{0}, [&]() -> JobHandle {
    auto job = std::make_unique<UmDriver>();
    if (!job->init(printer, jobId, nullptr)) {
      QUILLPRESS_TRACE(L"DrvSplStartDoc driver init failed\n");
      return 0;
    }
    return JobTable::add(std::move(job));
  });
}

int DrvSplWritePrinter(JobHandle job, const void* bytes, unsigned long count, unsigned long* written) {
  // Kept: counted before anything is tried, so a spooler that only looks at the count never sends a block
  // again (SpoolerInterfaceTest.TheCountIsStoredForABlockThatFailsToo).
  if (written != nullptr) *written = count;
  UmDriver* const driver = validJob(job, "DrvSplWritePrinter - invalid parms");
  if (driver == nullptr) return 0;
  if (writeBlock(*driver, bytes, count)) return 1;
  QUILLPRESS_TRACE(L"DrvSplWritePrinter returning FALSE\n");
  return 0;
}

int DrvSplEndDoc(JobHandle job) {
  UmDriver* const driver = validJob(job, "DrvSplEndDoc - invalid parms");
  return driver != nullptr && guarded(false, [&] { return driver->endDoc(); }) ? 1 : 0;
}

int DrvSplClose(JobHandle job) {
  // Not validJob: the end of a document takes the mark of an initialised job away, and closing comes after
  // it.
  if (JobTable::remove(job) != nullptr) return 1;
  showErrorBox("DrvSplClose - invalid parms");
  return 0;
}

int DrvSplStartPage(JobHandle job) {
  return validJob(job, "DrvSplStartPage invalid parms") != nullptr ? 1 : 0;
}

int DrvSplEndPage(JobHandle job) {
  return validJob(job, "DrvSplEndPage invalid parms") != nullptr ? 1 : 0;
}

int DrvSplAbort(JobHandle job) {
  UmDriver* const driver = validJob(job, "DrvSplAbort invalid parms");
  if (driver == nullptr) return 0;
  // Kept: nothing looks at the flag; it is closing that frees an aborted job
  // (SpoolerInterfaceTest.AbortOnlySetsItsFlag).
  driver->setStateFlag(UmDriver::kAborted);
  return 1;
}
}  // namespace quillpress::driver
