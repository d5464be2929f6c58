#pragma once

#include <optional>

#include "cli/base/Options.h"
#include "cli/base/TaskResult.h"

namespace quillpress::cli {

// The options for the one job, when all that they ask for is its PDF as the full language makes it; nothing
// when that takes the whole program, or a mistake that it has to speak of.
std::optional<Options> plainTask(const Options& options);

// Converts such a job. Everything that can go wrong has been said when it returns.
TaskResult runPlainTask(const Options& options);

}  // namespace quillpress::cli
