#include "cli/Program.h"

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Tasks.h"
#include "cli/task/TaskRunner.h"

namespace quillpress::cli {

ExitCode runProgram(const Options& options) {
  std::vector<Task> tasks;
  try {
    tasks = tasksOf(options);
  } catch (const UsageError& error) {
    say(error.what());
    say("try --help");
    return ExitCode::kUsage;
  }
  ExitCode exit = ExitCode::kDone;
  for (const Task& task : tasks) exit = graver(exit, runTask(optionsFor(options, task)).code);
  return exit;
}

}  // namespace quillpress::cli
