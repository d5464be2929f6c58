#include "cli/task/TaskRunner.h"

#include "cli/base/Errors.h"
#include "cli/base/OptionGroups.h"
#include "cli/driver/DriverConversion.h"
#include "cli/finish/FinishedOutput.h"
#include "cli/full/FullConversion.h"
#include "cli/run/RunProgram.h"
#include "cli/spool/AtomicOutput.h"
#include "cli/task/JobTask.h"

namespace quillpress::cli {

namespace {

std::unique_ptr<Output> openOutput(const Options& options) {
  if (!wantsFinishing(options)) return std::make_unique<AtomicOutput>(options.output);
  if (options.content) throw UsageError("--content writes no PDF, so nothing can be done to one");
  return std::make_unique<FinishedOutput>(options);
}

void convert(const Options& options, JobFile& job, Output& output, TaskResult& result) {
  if (options.dialect == Dialect::kFull) {
    convertFully(options, job, output, result);
  } else {
    convertDriverJob(options, job, output, result);
  }
}

}  // namespace

TaskResult runTask(const Options& options) {
  return runGuarded(options, [&options](TaskResult& result) {
    if (options.run) {
      result.code = interpretProgram(options);
    } else {
      convertJob(options, {openOutput, convert}, result);
    }
  });
}

}  // namespace quillpress::cli
