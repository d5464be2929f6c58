#pragma once

#include <functional>
#include <memory>

#include "cli/base/Options.h"
#include "cli/base/TaskResult.h"
#include "cli/job/JobFile.h"
#include "cli/spool/Output.h"

namespace quillpress::cli {

// Does `work` for the one job that the options are for. Exceptions have become a part of the result, and
// everything that can go wrong has been said, when it returns.
TaskResult runGuarded(const Options& options, const std::function<void(TaskResult&)>& work);

// How the output of a job is opened, and how the job is converted into it.
struct ConversionSteps {
  std::unique_ptr<Output> (*openOutput)(const Options& options);
  void (*convert)(const Options& options, JobFile& job, Output& output, TaskResult& result);
};

// Work for `runGuarded`.
void convertJob(const Options& options, const ConversionSteps& steps, TaskResult& result);

}  // namespace quillpress::cli
