#pragma once

#include "cli/base/Options.h"
#include "cli/base/TaskResult.h"
#include "cli/job/JobFile.h"
#include "cli/spool/Output.h"

namespace quillpress::cli {

// Converts a job of the whole language, as a client of <quillpress/document.h>.
void convertFully(const Options& options, JobFile& job, Output& output, TaskResult& result);

}  // namespace quillpress::cli
