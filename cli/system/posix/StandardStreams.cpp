#include "cli/system/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>

namespace quillpress::cli {

namespace {

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

}  // namespace

bool prepareStreams() {
  if (!openClosedStreams()) return false;
  // A reader that goes away and a limit on the size of files show as failed writes.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  return true;
}

bool isTerminal(StandardStream stream) {
  constexpr std::array kNumbers{STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
  return isatty(kNumbers[static_cast<std::size_t>(stream)]) == 1;
}

void writeToStandardError(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace quillpress::cli
