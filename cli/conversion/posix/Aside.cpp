#include "cli/conversion/Aside.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "cli/conversion/MessageSwitch.h"
#include "cli/system/Descriptor.h"

namespace quillpress::cli {

namespace {

// What the copy does. It leaves without its parent's ways of leaving: no buffer is flushed, no file removed.
[[noreturn]] void answer(const std::function<bool()>& question, const Descriptor& pipe) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const MessageSwitch silence(MessageSwitch::Target::kNowhere);
  try {
    // A byte means yes, and the end of the pipe no.
    if (question()) static_cast<void>(write(pipe.get(), "y", 1) == 1);
  } catch (...) {  // no answer is an answer too
  }
  _exit(0);
}

// Whether the pipe has an answer, or its end, before the limit has passed.
bool waitFor(const Descriptor& pipe, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  pollfd wanted{pipe.get(), POLLIN, 0};
  while (true) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    const int ready = poll(&wanted, 1, static_cast<int>(left.count()));
    if (ready > 0) return true;
    if (ready < 0 && errno != EINTR) return false;
  }
}

void end(pid_t copy) {
  kill(copy, SIGKILL);
  while (waitpid(copy, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

bool askAside(std::chrono::milliseconds limit, const std::function<bool()>& question) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const Descriptor reader(ends[0]);
  Descriptor writer(ends[1]);
  const pid_t copy = fork();
  if (copy < 0) return false;
  if (copy == 0) answer(question, writer);
  writer.reset();
  char byte = 0;
  const bool isTrue = waitFor(reader, limit) && read(reader.get(), &byte, 1) == 1;
  end(copy);
  return isTrue;
}

}  // namespace quillpress::cli
