// The program that users start. Most of them ask for a job's PDF and nothing else, and that needs neither the
// libraries that rework a complete PDF nor the driver's converter: loading them takes longer than a page
// does. So all else is in a library of its own.

#include "cli/Command.h"
#include "cli/base/Messages.h"
#include "cli/quick/PlainTask.h"
#include "cli/quick/WholeProgram.h"

int main(int argc, char** argv) {
  namespace cli = quillpress::cli;
  return cli::runCommand(argc, argv, [argc, argv](const cli::Options& options) {
    const auto task = cli::plainTask(options);
    if (!task) return static_cast<cli::ExitCode>(cli::runWholeProgram(argc, argv));
    return cli::runPlainTask(*task).code;
  });
}
