#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "cli/base/ExitCode.h"
#include "cli/system/Descriptor.h"

namespace quillpress::cli {

// What a worker answers: how the task has ended, and its record where one is wanted.
struct WorkerAnswer {
  ExitCode code;
  std::string record;
};

// A copy of this process that works off tasks, one after the other, so that a task which ends its process
// ends no other. It ends with this process, and with this object.
class WorkerProcess {
 public:
  // A task, by its place in the list that both processes know.
  using Work = std::function<WorkerAnswer(std::size_t)>;

  // Empty when no process can be had; errno says why. REQUIRES: this process has no other threads.
  static std::optional<WorkerProcess> start(const Work& work);

  WorkerProcess(WorkerProcess&& other) noexcept;
  WorkerProcess& operator=(WorkerProcess&& other) noexcept;
  ~WorkerProcess();

  // Readable when there is an answer, or when the process has ended.
  [[nodiscard]] int descriptor() const { return line_.get(); }

  // Hands over a task; false when the process has ended before.
  [[nodiscard]] bool give(std::size_t task) const;

  // The answer to the task; nothing when the process has ended without one. Waits for either.
  [[nodiscard]] std::optional<WorkerAnswer> answer() const;

  // Waits for the end, and says how it came: "was ended by signal 9: Killed".
  std::string howItEnded();

 private:
  WorkerProcess(pid_t process, Descriptor line);

  void end();

  pid_t process_;
  Descriptor line_;
};

}  // namespace quillpress::cli
