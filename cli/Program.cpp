#include "cli/Program.h"

#include <cstdio>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/base/OptionGroups.h"
#include "cli/base/Tasks.h"
#include "cli/batch/Batch.h"
#include "cli/manual/Completions.h"
#include "cli/manual/ManualPage.h"
#include "cli/task/TaskRunner.h"

namespace quillpress::cli {

namespace {

// What packagers install beside the program.
ExitCode generate(const std::string& kind) {
  std::string text;
  if (kind == "man") text = manualPage();
  if (kind == "bash") text = bashCompletion();
  if (kind == "zsh") text = zshCompletion();
  if (kind == "fish") text = fishCompletion();
  if (text.empty()) {
    say("--generate: none of man, bash, zsh and fish: " + kind);
    return ExitCode::kUsage;
  }
  const bool isWritten =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  return isWritten ? ExitCode::kDone : ExitCode::kOutput;
}

ExitCode runAsBatch(const Options& options, const std::vector<Task>& tasks) {
  if (options.run) {
    say("--run is for one program");
    return ExitCode::kUsage;
  }
  try {
    return runBatch(options, tasks);
  } catch (const OutputError& error) {
    say(outputName(options.report) + " " + error.what());
    return ExitCode::kOutput;
  }
}

}  // namespace

ExitCode runProgram(const Options& options) {
  if (!options.generated.empty()) return generate(options.generated);
  if (hasServedBatch(options)) return ExitCode::kDone;
  std::vector<Task> tasks;
  try {
    tasks = tasksOf(options);
  } catch (const UsageError& error) {
    say(error.what());
    say("try --help");
    return ExitCode::kUsage;
  } catch (const InputError& error) {
    say(jobName(options.batch) + " " + error.what());
    return ExitCode::kInput;
  }
  if (wantsBatch(options)) return runAsBatch(options, tasks);
  ExitCode exit = ExitCode::kDone;
  for (const Task& task : tasks) exit = graver(exit, runTask(optionsFor(options, task)).code);
  return exit;
}

}  // namespace quillpress::cli
