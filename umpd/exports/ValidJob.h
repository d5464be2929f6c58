#pragma once

#include "exports/JobTable.h"

namespace quillpress {

// The job of a handle if it has been initialised and not ended; else null, after an error box with the
// message.
UmDriver* validJob(JobHandle handle, const char* messageIfInvalid);

// A block of bytes becomes part of the job. Once a block has failed, all that follow fail at once.
bool writeBlock(UmDriver& job, const void* bytes, unsigned long count);

}  // namespace quillpress
