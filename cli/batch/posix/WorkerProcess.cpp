#include "cli/batch/WorkerProcess.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

#include "cli/system/Descriptor.h"

namespace quillpress::cli {

namespace {

ssize_t receive(int line, void* buffer, std::size_t size, int flags) {
  while (true) {
    const ssize_t count = recv(line, buffer, size, flags);
    if (count >= 0 || errno != EINTR) return count;
  }
}

// The codes of the program are small numbers, so one character holds them.
std::string encoded(const WorkerAnswer& answer) {
  return static_cast<char>(answer.code) + answer.record;
}

bool isSent(int line, const std::string& message) {
  if (send(line, message.data(), message.size(), MSG_NOSIGNAL) >= 0) return true;
  // A record may be too long; the code never is.
  return errno == EMSGSIZE && send(line, message.data(), 1, MSG_NOSIGNAL) == 1;
}

// What the copy does. It leaves without the ways of leaving of the process that it was copied from.
[[noreturn]] void workFor(const std::vector<Task>& tasks, const WorkerProcess::Work& work,
                          const Descriptor& line, pid_t parent) {
  // By a signal that removes names of files on their way to their place.
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(0);
  std::size_t task = 0;
  try {
    while (receive(line.get(), &task, sizeof task, 0) == sizeof task) {
      if (!isSent(line.get(), encoded(work(tasks[task])))) break;
    }
  } catch (...) {
    // Without an answer the other side knows enough.
  }
  std::fflush(nullptr);
  _exit(0);
}

}  // namespace

struct WorkerProcess::Connection {
  Connection(pid_t number, Descriptor own) : process(number), line(std::move(own)) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  // One that waits for a task ends when nobody can give it one any more.
  ~Connection() {
    if (process > 0) end();
  }

  std::string end() {
    // Closing would not do: processes that were copied later hold this end, too.
    shutdown(line.get(), SHUT_RDWR);
    line.reset();
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
      if (errno != EINTR) break;
    }
    process = -1;
    if (!WIFSIGNALED(status)) return "ended by itself";
    const int number = WTERMSIG(status);
    return "was ended by signal " + std::to_string(number) + ": " + strsignal(number);
  }

  pid_t process;
  Descriptor line;
};

std::optional<WorkerProcess> WorkerProcess::start(const std::vector<Task>& tasks, const Work& work) {
  int ends[2];
  // Messages come whole or not at all.
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return std::nullopt;
  Descriptor own(ends[0]);
  Descriptor others(ends[1]);
  // What waits in a buffer would come twice.
  std::fflush(nullptr);
  const pid_t parent = getpid();
  const pid_t process = fork();
  if (process < 0) return std::nullopt;
  if (process == 0) {
    own.reset();
    // Both know the list, so that a place in it says which task is meant.
    workFor(tasks, work, others, parent);
  }
  return WorkerProcess(std::make_unique<Connection>(process, std::move(own)));
}

bool WorkerProcess::serve(const Work& /*work*/) {
  return false;
}

WorkerProcess::WorkerProcess(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}

WorkerProcess::WorkerProcess(WorkerProcess&& other) noexcept = default;

WorkerProcess& WorkerProcess::operator=(WorkerProcess&& other) noexcept = default;

WorkerProcess::~WorkerProcess() = default;

std::vector<std::size_t> WorkerProcess::waitForAny(const std::vector<const WorkerProcess*>& workers,
                                                   std::chrono::milliseconds limit) {
  std::vector<pollfd> lines;
  for (const WorkerProcess* const worker : workers)
    lines.push_back({worker->connection_->line.get(), POLLIN, 0});
  std::vector<std::size_t> ready;
  if (poll(lines.data(), lines.size(), static_cast<int>(limit.count())) <= 0) return ready;
  for (std::size_t place = 0; place < lines.size(); ++place) {
    if (lines[place].revents != 0) ready.push_back(place);
  }
  return ready;
}

bool WorkerProcess::give(std::size_t task) {
  return send(connection_->line.get(), &task, sizeof task, MSG_NOSIGNAL) == sizeof task;
}

std::optional<WorkerAnswer> WorkerProcess::answer() {
  const int line = connection_->line.get();
  // A look at the message tells its length.
  const ssize_t size = receive(line, nullptr, 0, MSG_PEEK | MSG_TRUNC);
  if (size <= 0) return std::nullopt;
  std::string message(static_cast<std::size_t>(size), '\0');
  if (receive(line, message.data(), message.size(), 0) != size) return std::nullopt;
  return WorkerAnswer{static_cast<ExitCode>(message.front()), message.substr(1)};
}

std::string WorkerProcess::howItEnded() {
  return connection_->end();
}

}  // namespace quillpress::cli
