#pragma once

#include "cli/base/Options.h"
#include "cli/base/TaskResult.h"

namespace quillpress::cli {

// Converts, or interprets, the one job that the options are for. Everything that can go wrong has been said
// when it returns.
TaskResult runTask(const Options& options);

}  // namespace quillpress::cli
