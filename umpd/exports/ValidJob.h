#pragma once

#include "umpd/exports/JobTable.h"

namespace quillpress {

// The job of a handle if it has been initialised and not ended; else null, after an error box with the
// message.
UmDriver* validJob(JobHandle handle, const char* messageIfInvalid);

}  // namespace quillpress
