#pragma once

#include <optional>
#include <string>
#include <vector>

#include "umpd/rules/QueuedJob.h"
#include "umpd/spooler/Printer.h"

namespace quillpress::driver {
// The jobs of a printer; empty when the spooler does not tell. There are as many as the printer's own
// record counts: those that the spooler does not list are all zero.
std::vector<QueuedJob> readJobQueue(HANDLE printer);

// The job that was put into the printer's queue last; one with id 0 and no name when there is none.
QueuedJob currentPrintJob(HANDLE printer);

// Whether nothing holds the job up in the printer's queue.
bool isJobStatusOk(HANDLE printer, DWORD jobId);

// The document name of a job, or nothing when the spooler does not know the job.
std::optional<std::wstring> readDocumentName(HANDLE printer, DWORD jobId);

// Takes a job out of the queue: the front end has all of it, the spooled copy is not wanted.
void removeJob(HANDLE printer, DWORD jobId);
}  // namespace quillpress::driver
