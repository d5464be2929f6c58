#include "cli/task/TaskRunner.h"

#include <memory>
#include <new>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/driver/DriverConversion.h"
#include "cli/finish/FinishedOutput.h"
#include "cli/full/FullConversion.h"
#include "cli/job/JobFile.h"
#include "cli/run/RunProgram.h"
#include "cli/spool/AtomicOutput.h"

namespace quillpress::cli {

namespace {

std::unique_ptr<Output> openOutput(const Options& options) {
  if (!wantsFinishing(options)) return std::make_unique<AtomicOutput>(options.output);
  if (options.content) throw UsageError("--content writes no PDF, so nothing can be done to one");
  return std::make_unique<FinishedOutput>(options);
}

void convert(const Options& options, TaskResult& result) {
  JobFile job(options.job);
  // Before anything is opened for writing, which might already empty the job.
  if (job.isSameAs(options.output)) throw UsageError("the output would replace the job itself");
  const std::unique_ptr<Output> output = openOutput(options);
  if (options.dialect == Dialect::kFull) {
    convertFully(options, job, *output, result);
  } else {
    convertDriverJob(options, job, *output, result);
  }
  if (result.code == ExitCode::kDone && output->hasWarned()) result.code = ExitCode::kCutOff;
}

// The one place where exceptions become results.
void fail(TaskResult& result, ExitCode code, const std::string& message) {
  say(message);
  result.code = code;
  result.error = message;
}

}  // namespace

TaskResult runTask(const Options& options) {
  TaskResult result;
  try {
    if (options.run) {
      result.code = interpretProgram(options);
    } else {
      convert(options, result);
    }
  } catch (const UsageError& error) {
    fail(result, ExitCode::kUsage, error.what());
  } catch (const InputError& error) {
    fail(result, ExitCode::kInput, jobName(options.job) + " " + error.what());
  } catch (const OutputError& error) {
    fail(result, ExitCode::kOutput, outputName(options.output) + " " + error.what());
  } catch (const std::bad_alloc&) {
    fail(result, ExitCode::kConversion, jobName(options.job) + ": out of memory");
  }
  return result;
}

}  // namespace quillpress::cli
