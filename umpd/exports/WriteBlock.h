#pragma once

#include "umpd/job/UmDriver.h"

namespace quillpress {

// A block of bytes becomes part of the job. Once a block has failed, all that follow fail at once.
bool writeBlock(UmDriver& job, const void* bytes, unsigned long count);

}  // namespace quillpress
