#pragma once

#include "cli/base/ExitCode.h"
#include "cli/base/Options.h"

namespace quillpress::cli {

// Does what the options say. Everything that can go wrong has been said when it returns.
ExitCode runProgram(const Options& options);

}  // namespace quillpress::cli
