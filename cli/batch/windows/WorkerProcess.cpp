#include "cli/batch/WorkerProcess.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "cli/system/windows/Handle.h"
#include "cli/system/windows/SystemError.h"
#include "cli/system/windows/WideText.h"

namespace quillpress::cli {

namespace {

// The variable that tells a worker its end of the pipe. Handles keep their numbers when they are inherited.
constexpr const wchar_t* kVariable = L"QUILLPRESS_WORKER";
constexpr DWORD kPipeSize = 64 * 1024;
// The job's and the output's name are parted by what no name can hold.
constexpr char kPartition = '\0';

// One message of a pipe, as it comes in.
class Message {
 public:
  // Begins to read; the end of that sets the event.
  void begin(HANDLE pipe, HANDLE event) {
    text_.clear();
    overlapped_ = {};
    overlapped_.hEvent = event;
    ResetEvent(event);
    // A failure shows when the result is asked for; until then it only must not be waited for.
    const bool isBegun = ReadFile(pipe, block_.data(), kPipeSize, nullptr, &overlapped_) != 0;
    isPending_ = isBegun || GetLastError() == ERROR_IO_PENDING || GetLastError() == ERROR_MORE_DATA;
    if (!isPending_) SetEvent(event);
  }

  // Waits for the whole message; nothing when the other end has gone.
  std::optional<std::string> finish(HANDLE pipe) {
    while (std::exchange(isPending_, false)) {
      DWORD count = 0;
      const bool isWhole = GetOverlappedResult(pipe, &overlapped_, &count, TRUE) != 0;
      if (!isWhole && GetLastError() != ERROR_MORE_DATA) break;
      text_.append(block_.data(), count);
      if (isWhole) return std::move(text_);
      const std::string part = std::move(text_);
      begin(pipe, overlapped_.hEvent);
      text_ = part;
    }
    return std::nullopt;
  }

  // REQUIRES: the pipe is still open. Afterwards nothing is written here any more.
  void cancel(HANDLE pipe) {
    if (!std::exchange(isPending_, false)) return;
    CancelIo(pipe);
    DWORD count = 0;
    GetOverlappedResult(pipe, &overlapped_, &count, TRUE);
  }

 private:
  OVERLAPPED overlapped_{};
  bool isPending_ = false;
  std::array<char, kPipeSize> block_{};
  std::string text_;
};

Handle newEvent() {
  return Handle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

// Writes one message; false when the other end has gone.
bool isSent(HANDLE pipe, const std::string& message) {
  const Handle event = newEvent();
  OVERLAPPED overlapped{};
  overlapped.hEvent = event.get();
  DWORD count = 0;
  const auto size = static_cast<DWORD>(message.size());
  const bool isBegun = WriteFile(pipe, message.data(), size, nullptr, &overlapped) != 0;
  if (!isBegun && GetLastError() != ERROR_IO_PENDING) return false;
  return GetOverlappedResult(pipe, &overlapped, &count, TRUE) != 0 && count == size;
}

// Ends its processes when the last handle of it goes, which is with this process.
HANDLE jobObject() {
  static const Handle job = [] {
    Handle made(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(made.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return made;
  }();
  return job.get();
}

std::wstring ownProgram() {
  constexpr std::size_t kLongestPath = 32 * 1024;
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
  return path;
}

// This end is for overlapped calls, as several pipes are waited for at a time.
Handle newPipe(const std::wstring& name) {
  return Handle(CreateNamedPipeW(
      name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
      PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1, kPipeSize, kPipeSize, 0, nullptr));
}

Handle otherEnd(const std::wstring& name) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  Handle pipe(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, &inherited, OPEN_EXISTING,
                          FILE_FLAG_OVERLAPPED, nullptr));
  DWORD mode = PIPE_READMODE_MESSAGE;
  if (pipe) SetNamedPipeHandleState(pipe.get(), &mode, nullptr, nullptr);
  return pipe;
}

// The same program with the same command line.
Handle startProgram(HANDLE pipe) {
  const auto number = reinterpret_cast<std::uintptr_t>(pipe);
  SetEnvironmentVariableW(kVariable, std::to_wstring(number).c_str());
  std::wstring commandLine = GetCommandLineW();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const bool isStarted = CreateProcessW(ownProgram().c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                        CREATE_SUSPENDED, nullptr, nullptr, &startup, &process) != 0;
  if (!isStarted) takeSystemError();
  SetEnvironmentVariableW(kVariable, nullptr);
  if (!isStarted) return {};
  const Handle thread(process.hThread);
  // Refused to a process that already is in a job of somebody else's on older systems; then the worker ends
  // when it finds its pipe broken.
  AssignProcessToJobObject(jobObject(), process.hProcess);
  ResumeThread(thread.get());
  return Handle(process.hProcess);
}

// The worker's end of the pipe; empty in a process that is no worker.
Handle ownPipe() {
  std::array<wchar_t, 32> text{};
  const DWORD size = GetEnvironmentVariableW(kVariable, text.data(), text.size());
  if (size == 0 || size >= text.size()) return {};
  // Not for those whom the worker starts.
  SetEnvironmentVariableW(kVariable, nullptr);
  const auto number = static_cast<std::uintptr_t>(std::wcstoul(text.data(), nullptr, 10));
  const auto pipe = reinterpret_cast<HANDLE>(number);
  return Handle(GetFileType(pipe) == FILE_TYPE_PIPE ? pipe : nullptr);
}

Task taskOf(const std::string& message) {
  const std::size_t end = message.find(kPartition);
  return {message.substr(0, end), message.substr(end + 1)};
}

}  // namespace

struct WorkerProcess::Connection {
  explicit Connection(const std::vector<Task>& list) : tasks(list) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() {
    if (process) end();
  }

  std::string end() {
    message.cancel(pipe.get());
    // A worker that waits for a task finds nobody there any more.
    pipe = Handle();
    WaitForSingleObject(process.get(), INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.get(), &status);
    process = Handle();
    if (status == 0) return "ended by itself";
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08lX", status);
    return std::string("was ended with status ") + text.data();
  }

  const std::vector<Task>& tasks;
  Handle process;
  Handle pipe;
  Handle event = newEvent();  // set when the message has come
  Message message;
};

std::optional<WorkerProcess> WorkerProcess::start(const std::vector<Task>& tasks, const Work& /*work*/) {
  static unsigned count = 0;
  const std::wstring name =
      L"\\\\.\\pipe\\quillpress-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
  auto connection = std::make_unique<Connection>(tasks);
  connection->pipe = newPipe(name);
  const Handle others = connection->pipe ? otherEnd(name) : Handle();
  if (!others) {
    takeSystemError();
    return std::nullopt;
  }
  std::fflush(nullptr);
  connection->process = startProgram(others.get());
  if (!connection->process) return std::nullopt;
  connection->message.begin(connection->pipe.get(), connection->event.get());
  return WorkerProcess(std::move(connection));
}

bool WorkerProcess::serve(const Work& work) {
  const Handle pipe = ownPipe();
  if (!pipe) return false;
  const Handle event = newEvent();
  const auto message = std::make_unique<Message>();
  try {
    while (true) {
      message->begin(pipe.get(), event.get());
      const auto text = message->finish(pipe.get());
      if (!text) break;
      const WorkerAnswer answer = work(taskOf(*text));
      // The codes of the program are small numbers, so one character holds them.
      if (!isSent(pipe.get(), static_cast<char>(answer.code) + answer.record)) break;
    }
  } catch (...) {
    // Without an answer the other side knows enough.
  }
  return true;
}

WorkerProcess::WorkerProcess(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}

WorkerProcess::WorkerProcess(WorkerProcess&& other) noexcept = default;

WorkerProcess& WorkerProcess::operator=(WorkerProcess&& other) noexcept = default;

WorkerProcess::~WorkerProcess() = default;

std::vector<std::size_t> WorkerProcess::waitForAny(const std::vector<const WorkerProcess*>& workers,
                                                   std::chrono::milliseconds limit) {
  std::vector<HANDLE> events;
  events.reserve(workers.size());
  for (const WorkerProcess* const worker : workers) events.push_back(worker->connection_->event.get());
  // The system waits for so many at a time; with more, it is looked at all of them now and then.
  constexpr DWORD kPause = 5;
  const bool areMany = events.size() > MAXIMUM_WAIT_OBJECTS;
  const auto count = static_cast<DWORD>(std::min<std::size_t>(events.size(), MAXIMUM_WAIT_OBJECTS));
  const auto time = areMany ? kPause : static_cast<DWORD>(limit.count());
  WaitForMultipleObjects(count, events.data(), FALSE, time);
  std::vector<std::size_t> ready;
  for (std::size_t place = 0; place < events.size(); ++place) {
    if (WaitForSingleObject(events[place], 0) == WAIT_OBJECT_0) ready.push_back(place);
  }
  return ready;
}

bool WorkerProcess::give(std::size_t task) {
  const Task& given = connection_->tasks[task];
  return isSent(connection_->pipe.get(), given.job + kPartition + given.output);
}

std::optional<WorkerAnswer> WorkerProcess::answer() {
  Connection& own = *connection_;
  const auto text = own.message.finish(own.pipe.get());
  if (!text || text->empty()) return std::nullopt;
  own.message.begin(own.pipe.get(), own.event.get());
  return WorkerAnswer{static_cast<ExitCode>(text->front()), text->substr(1)};
}

std::string WorkerProcess::howItEnded() {
  return connection_->end();
}

}  // namespace quillpress::cli
