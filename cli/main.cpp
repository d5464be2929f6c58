#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <exception>
#include <new>

#include "cli/Program.h"
#include "cli/base/Messages.h"
#include "cli/base/Options.h"

namespace {

using quillpress::cli::ExitCode;

// A standard stream that is closed at the start would give its number to the next file that is opened, and
// messages would end up in that. It is opened on nothing instead, and the wrong way round, so that using it
// fails as it should. Open calls take the lowest free number, so the order decides.
bool openClosedStreams() {
  struct Stream {
    int number;
    int mode;
  };
  constexpr std::array kStreams{Stream{STDIN_FILENO, O_WRONLY}, Stream{STDOUT_FILENO, O_RDONLY},
                                Stream{STDERR_FILENO, O_RDONLY}};
  for (const Stream& stream : kStreams) {
    if (fcntl(stream.number, F_GETFD) != -1) continue;
    if (open("/dev/null", stream.mode) != stream.number) return false;
  }
  return true;
}

ExitCode run(int argc, const char* const* argv) {
  if (!openClosedStreams()) return ExitCode::kOutput;
  // A reader that goes away and a limit on the size of files show as failed writes.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  ExitCode exit = ExitCode::kDone;
  const auto options = quillpress::cli::parseOptions(argc, argv, exit);
  return options ? quillpress::cli::runProgram(*options) : exit;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return static_cast<int>(run(argc, argv));
  } catch (const std::bad_alloc&) {
    quillpress::cli::say("out of memory");
  } catch (const std::exception& error) {
    quillpress::cli::say(error.what());
  }
  return static_cast<int>(ExitCode::kConversion);
}
