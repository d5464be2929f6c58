#include "cli/task/JobTask.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <new>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/base/ProgressLine.h"

namespace quillpress::cli {

namespace {

// The one place where exceptions become results.
void fail(TaskResult& result, ExitCode code, const std::string& message) {
  say(message);
  result.code = code;
  result.error = message;
}

void sayWhatBecame(const Options& options, const TaskResult& result) {
  const bool isWritten = result.code != ExitCode::kConversion && result.error.empty();
  if (!isWritten) return;
  std::array<char, 40> time{};
  std::snprintf(time.data(), time.size(), "%.2f s", result.milliseconds / 1000);
  std::string text = jobName(options.job) + ": " + counted(result.pages, "page");
  if (result.bytes > 0) text += ", " + roughSize(result.bytes);
  say(text + " to " + outputName(options.output) + " in " + time.data());
}

}  // namespace

TaskResult runGuarded(const Options& options, const std::function<void(TaskResult&)>& work) {
  const auto begin = std::chrono::steady_clock::now();
  TaskResult result;
  try {
    work(result);
  } catch (const UsageError& error) {
    fail(result, ExitCode::kUsage, error.what());
  } catch (const InputError& error) {
    fail(result, ExitCode::kInput, jobName(options.job) + " " + error.what());
  } catch (const ArchiveError& error) {
    fail(result, ExitCode::kConversion, jobName(options.job) + ": " + error.what());
  } catch (const OutputError& error) {
    fail(result, ExitCode::kOutput, outputName(options.output) + " " + error.what());
  } catch (const std::bad_alloc&) {
    fail(result, ExitCode::kConversion, jobName(options.job) + ": out of memory");
  }
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
  result.milliseconds = taken.count();
  if (options.verbose && !options.run) sayWhatBecame(options, result);
  return result;
}

void convertJob(const Options& options, const ConversionSteps& steps, TaskResult& result) {
  JobFile job(options.job);
  // Before anything is opened for writing, which might already empty the job.
  if (job.isSameAs(options.output)) throw UsageError("the output would replace the job itself");
  const std::unique_ptr<Output> output = steps.openOutput(options);
  steps.convert(options, job, *output, result);
  if (result.code == ExitCode::kDone && output->hasWarned()) result.code = ExitCode::kCutOff;
  result.bytes = output->bytesWritten();
}

}  // namespace quillpress::cli
