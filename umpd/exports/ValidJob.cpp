#include "exports/ValidJob.h"

#include "exports/Guarded.h"
#include "win32/ErrorBox.h"

namespace quillpress {

UmDriver* validJob(JobHandle handle, const char* messageIfInvalid) {
  UmDriver* const job = JobTable::find(handle);
  if (job != nullptr && (job->stateFlags() & UmDriver::kInitialised) != 0) return job;
  showErrorBox("%s", messageIfInvalid);
  return nullptr;
}

bool writeBlock(UmDriver& job, const void* bytes, unsigned long count) {
  if ((job.stateFlags() & UmDriver::kWriteFailed) != 0) return false;
  const bool isReadable = bytes != nullptr || count == 0;
  const bool isWritten = isReadable && guarded(false, [&] {
                           return job.write({static_cast<const std::byte*>(bytes), count});
                         });
  if (!isWritten) job.setStateFlag(UmDriver::kWriteFailed);
  return isWritten;
}

}  // namespace quillpress
