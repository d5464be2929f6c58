#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/base/ExitCode.h"
#include "cli/base/Tasks.h"

namespace quillpress::cli {

// What a worker answers: how the task has ended, and its record where one is wanted.
struct WorkerAnswer {
  ExitCode code;
  std::string record;
};

// A process that works off tasks, one after the other, so that a task which ends its process ends no other.
// It ends with this process, and with this object.
class WorkerProcess {
 public:
  using Work = std::function<WorkerAnswer(const Task&)>;

  // A worker for tasks of the list, which lives as long. Empty when no process can be had; errno says why.
  // REQUIRES: this process has no other threads.
  static std::optional<WorkerProcess> start(const std::vector<Task>& tasks, const Work& work);

  // Where processes cannot be copied, a worker is another run of the program with the same options, which
  // calls this: it works off the tasks that it is given, and returns true at their end. False at once in a
  // process that is no worker.
  static bool serve(const Work& work);

  WorkerProcess(WorkerProcess&& other) noexcept;
  WorkerProcess& operator=(WorkerProcess&& other) noexcept;
  ~WorkerProcess();

  // Waits until some of the workers have an answer or have ended, though no longer than `limit`. The places
  // of those workers, in ascending order.
  static std::vector<std::size_t> waitForAny(const std::vector<const WorkerProcess*>& workers,
                                             std::chrono::milliseconds limit);

  // Hands over a task, by its place in the list; false when the process has ended before.
  [[nodiscard]] bool give(std::size_t task);

  // The answer to the task; nothing when the process has ended without one. Waits for either.
  [[nodiscard]] std::optional<WorkerAnswer> answer();

  // Waits for the end, and says how it came: "was ended by signal 9: Killed".
  std::string howItEnded();

 private:
  struct Connection;

  explicit WorkerProcess(std::unique_ptr<Connection> connection);

  std::unique_ptr<Connection> connection_;  // ends the process
};

}  // namespace quillpress::cli
