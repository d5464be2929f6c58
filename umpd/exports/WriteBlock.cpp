#include "umpd/exports/WriteBlock.h"

#include "umpd/exports/Guarded.h"

namespace quillpress {

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
