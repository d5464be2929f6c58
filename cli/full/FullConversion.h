#pragma once

#include "cli/base/ExitCode.h"
#include "cli/base/Options.h"
#include "cli/spool/AtomicOutput.h"

namespace quillpress::cli {

// Converts a job of the whole language, as a client of <quillpress/document.h>.
ExitCode convertFully(const Options& options, AtomicOutput& output);

}  // namespace quillpress::cli
