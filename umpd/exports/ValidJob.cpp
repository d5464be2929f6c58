#include "umpd/exports/ValidJob.h"

#include "umpd/win32/ErrorBox.h"

namespace quillpress {

UmDriver* validJob(JobHandle handle, const char* messageIfInvalid) {
  UmDriver* const job = JobTable::find(handle);
  if (job != nullptr && (job->stateFlags() & UmDriver::kInitialised) != 0) return job;
  showErrorBox("%s", messageIfInvalid);
  return nullptr;
}

}  // namespace quillpress
