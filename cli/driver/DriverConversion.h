#pragma once

#include "cli/base/Options.h"
#include "cli/base/TaskResult.h"
#include "cli/job/JobFile.h"
#include "cli/spool/Output.h"

namespace quillpress::cli {

// Converts a job of the driver's dialect, as a client of <quillpress/converter.h>.
void convertDriverJob(const Options& options, JobFile& job, Output& output, TaskResult& result);

}  // namespace quillpress::cli
