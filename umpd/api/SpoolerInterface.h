#pragma once

#include "umpd/api/JobTable.h"

namespace quillpress::driver {
// The same jobs behind the names and steps of the spooler's own driver interface, for a driver that is called
// by the spooler directly. They are not exported. An invalid handle shows an error box and gives 0.

// Begins a job; 0 when that fails.
JobHandle DrvSplStartDoc(void* printer, unsigned long jobId);

// Stores `count` into `written` before anything else.
int DrvSplWritePrinter(JobHandle job, const void* bytes, unsigned long count, unsigned long* written);

// Ends the document; the job lives on until it is closed.
int DrvSplEndDoc(JobHandle job);

// Destroys the job, in whatever state it is.
int DrvSplClose(JobHandle job);

int DrvSplStartPage(JobHandle job);
int DrvSplEndPage(JobHandle job);

// Marks the job as aborted; nothing else happens.
int DrvSplAbort(JobHandle job);
}  // namespace quillpress::driver
