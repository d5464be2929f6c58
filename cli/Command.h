#pragma once

#include <functional>

#include "cli/base/ExitCode.h"
#include "cli/base/Options.h"

namespace quillpress::cli {

// What a `main` does: reads the arguments, and does `run` when there is anything to do. Returns the status of
// the process.
int runCommand(int argc, const char* const* argv, const std::function<ExitCode(const Options&)>& run);

}  // namespace quillpress::cli
