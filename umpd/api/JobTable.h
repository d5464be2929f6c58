#pragma once

#include <memory>

#include "umpd/job/UmDriver.h"

namespace quillpress::driver {
// What the driver knows a job by.
using JobHandle = unsigned long;

// The jobs that this process has been given handles for. A handle that has been ended, or was never given
// out, is told from a living one without touching what it points at.
class JobTable {
 public:
  static JobHandle add(std::unique_ptr<UmDriver> job);

  // The job of a handle; null unless it lives. Borrowed: one thread at a time uses a job.
  static UmDriver* find(JobHandle handle);

  // Gives the job back to its last user; null unless it lives and has its signature.
  static std::unique_ptr<UmDriver> remove(JobHandle handle);
};

// The job of a handle if it has been initialised and not ended; else null, after an error box with the
// message.
UmDriver* validJob(JobHandle handle, const char* messageIfInvalid);

// A block of bytes becomes part of the job. Once a block has failed, all that follow fail at once.
bool writeBlock(UmDriver& job, const void* bytes, unsigned long count);
}  // namespace quillpress::driver
