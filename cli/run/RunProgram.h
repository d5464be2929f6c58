#pragma once

#include "cli/base/Options.h"

namespace quillpress::cli {

// --run: interprets the program; what it prints goes to standard output, and no page is made.
ExitCode interpretProgram(const Options& options);

}  // namespace quillpress::cli
