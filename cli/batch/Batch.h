#pragma once

#include <vector>

#include "cli/base/ExitCode.h"
#include "cli/base/Options.h"
#include "cli/base/Tasks.h"

namespace quillpress::cli {

// Whether this process is one of the workers of such a run. It has done its work then.
bool hasServedBatch(const Options& options);

// Runs the tasks in worker processes, and reports on each. The result is the gravest of their codes. Throws
// OutputError when the report cannot be opened.
ExitCode runBatch(const Options& options, const std::vector<Task>& tasks);

}  // namespace quillpress::cli
