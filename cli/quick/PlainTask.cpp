#include "cli/quick/PlainTask.h"

#include <vector>

#include "cli/base/Errors.h"
#include "cli/base/OptionGroups.h"
#include "cli/base/Tasks.h"
#include "cli/full/FullConversion.h"
#include "cli/spool/AtomicOutput.h"
#include "cli/task/JobTask.h"

namespace quillpress::cli {

namespace {

std::unique_ptr<Output> openOutput(const Options& options) {
  return std::make_unique<AtomicOutput>(options.output);
}

bool isPlain(const Options& options) {
  return options.generated.empty() && !options.run && !options.content && options.dialect == Dialect::kFull &&
         !wantsBatch(options) && !wantsFinishing(options);
}

}  // namespace

std::optional<Options> plainTask(const Options& options) {
  if (!isPlain(options)) return std::nullopt;
  try {
    const std::vector<Task> tasks = tasksOf(options);
    if (tasks.size() != 1) return std::nullopt;
    return optionsFor(options, tasks.front());
  } catch (const UsageError&) {
    return std::nullopt;
  }
}

TaskResult runPlainTask(const Options& options) {
  return runGuarded(options, [&options](TaskResult& result) {
    convertJob(options, {openOutput, convertFully}, result);
  });
}

}  // namespace quillpress::cli
