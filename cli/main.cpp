#include <csignal>
#include <exception>

#include "cli/Program.h"
#include "cli/base/Messages.h"
#include "cli/base/Options.h"

namespace {

using quillpress::cli::ExitCode;

ExitCode run(int argc, const char* const* argv) {
  // A reader that goes away shows as a failed write.
  std::signal(SIGPIPE, SIG_IGN);
  ExitCode exit = ExitCode::Done;
  const auto options = quillpress::cli::parseOptions(argc, argv, exit);
  return options ? quillpress::cli::runProgram(*options) : exit;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return static_cast<int>(run(argc, argv));
  } catch (const std::exception& error) {
    quillpress::cli::say(error.what());
    return static_cast<int>(ExitCode::Conversion);
  }
}
