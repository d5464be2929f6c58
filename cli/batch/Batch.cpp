#include "cli/batch/Batch.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/PagePattern.h"
#include "cli/base/ProgressLine.h"
#include "cli/batch/JobRecord.h"
#include "cli/batch/Report.h"
#include "cli/batch/WorkerProcess.h"
#include "cli/system/Environment.h"
#include "cli/system/Paths.h"
#include "cli/task/TaskRunner.h"

namespace quillpress::cli {

namespace {

// After so many jobs a worker makes room for a fresh one, and whatever has grown in it goes.
constexpr std::size_t kMostJobsOfAWorker = 500;

struct Worker {
  WorkerProcess process;
  std::optional<std::size_t> task;
  std::size_t jobsDone = 0;
};

bool isThere(const Task& task) {
  const auto pattern = PagePattern::parse(task.output);
  std::error_code error;
  return std::filesystem::exists(pathOf(pattern ? pattern->nameOf(1) : task.output), error);
}

// In the worker.
WorkerAnswer work(const Options& options, const Task& task) {
  Options one = optionsFor(options, task);
  one.isPartOfBatch = true;
  const TaskResult result = runTask(one);
  return {result.code, options.report.empty() ? std::string() : jobRecord(task, result)};
}

class Batch {
 public:
  Batch(const Options& options, const std::vector<Task>& tasks)
      : options_(options),
        tasks_(tasks),
        report_(options.report, options.skipExisting),
        progress_(!options.quiet) {}

  ExitCode run() {
    chooseTasks();
    const std::size_t wanted = std::min(numberOfWorkers(), waiting_.size());
    while (workers_.size() < wanted && startWorker()) {
    }
    while (isBusy()) {
      waitForAnswers();
      showProgress();
    }
    progress_.clear();
    sayWhatBecame();
    return code_;
  }

 private:
  void chooseTasks() {
    for (std::size_t place = 0; place < tasks_.size(); ++place) {
      if (!options_.shard.has(place)) continue;
      if (options_.skipExisting && isThere(tasks_[place])) {
        ++skipped_;
        if (report_.isWanted() && !report_.knows(tasks_[place])) record(skippedRecord(tasks_[place]));
      } else {
        waiting_.push_back(place);
      }
    }
    // Taken from the end.
    std::reverse(waiting_.begin(), waiting_.end());
    total_ = waiting_.size();
  }

  [[nodiscard]] std::size_t numberOfWorkers() const {
    if (options_.workers > 0) return options_.workers;
    return processorCount();
  }

  // False when there is no process to be had.
  bool startWorker() {
    auto process = WorkerProcess::start(tasks_, [this](const Task& task) { return work(options_, task); });
    if (!process) {
      // With those that there are it goes on; without any, nothing can be done.
      if (workers_.empty()) failAll("no worker can be started: " + systemReason());
      return false;
    }
    workers_.push_back({std::move(*process), std::nullopt});
    giveNext(workers_.back());
    return true;
  }

  [[nodiscard]] bool isBusy() const {
    return !waiting_.empty() || std::any_of(workers_.begin(), workers_.end(),
                                            [](const Worker& worker) { return worker.task.has_value(); });
  }

  void giveNext(Worker& worker) {
    worker.task.reset();
    if (waiting_.empty()) return;
    // One that is gone is noticed when its line is read, and has not begun with the task.
    if (!worker.process.give(waiting_.back())) return;
    worker.task = waiting_.back();
    waiting_.pop_back();
  }

  void waitForAnswers() {
    constexpr std::chrono::milliseconds kPace{200};
    std::vector<const WorkerProcess*> processes;
    for (const Worker& worker : workers_) processes.push_back(&worker.process);
    const std::vector<std::size_t> ready = WorkerProcess::waitForAny(processes, kPace);
    // From the end, as workers may go and others come behind.
    for (auto place = ready.rbegin(); place != ready.rend(); ++place) takeAnswer(*place);
  }

  void takeAnswer(std::size_t place) {
    Worker& worker = workers_[place];
    const auto answer = worker.process.answer();
    if (!answer) {
      replace(place);
      return;
    }
    count(answer->code);
    record(answer->record.empty() ? plainRecord(*worker.task, answer->code) : answer->record);
    if (++worker.jobsDone < kMostJobsOfAWorker) {
      giveNext(worker);
    } else {
      workers_.erase(workers_.begin() + static_cast<std::ptrdiff_t>(place));
      if (!waiting_.empty()) startWorker();
    }
  }

  // A worker has ended, and what it was at goes with it.
  void replace(std::size_t place) {
    const std::string how = workers_[place].process.howItEnded();
    const auto task = workers_[place].task;
    workers_.erase(workers_.begin() + static_cast<std::ptrdiff_t>(place));
    if (task) fail(*task, "its worker " + how);
    if (!waiting_.empty()) startWorker();
  }

  void fail(std::size_t task, const std::string& message) {
    progress_.clear();
    say(tasks_[task].job + ": " + message);
    TaskResult result;
    result.code = ExitCode::kConversion;
    result.error = message;
    count(result.code);
    if (report_.isWanted()) record(jobRecord(tasks_[task], result));
  }

  // Of a job whose own record was too long for a message.
  [[nodiscard]] std::string plainRecord(std::size_t task, ExitCode code) const {
    TaskResult result;
    result.code = code;
    return jobRecord(tasks_[task], result);
  }

  void failAll(const std::string& message) {
    while (!waiting_.empty()) {
      fail(waiting_.back(), message);
      waiting_.pop_back();
    }
  }

  void count(ExitCode code) {
    ++ended_;
    if (code == ExitCode::kCutOff) ++warned_;
    if (code != ExitCode::kDone && code != ExitCode::kCutOff) ++failed_;
    code_ = graver(code_, code);
  }

  // A report that cannot be written any more is no reason to leave jobs undone.
  void record(const std::string& line) {
    if (!report_.isWanted() || reportHasFailed_) return;
    try {
      report_.add(line);
    } catch (const OutputError& error) {
      say(options_.report + " " + error.what());
      reportHasFailed_ = true;
      code_ = graver(code_, ExitCode::kOutput);
    }
  }

  void showProgress() {
    if (!progress_.isDue()) return;
    const auto rate = static_cast<unsigned long long>(static_cast<double>(ended_) / progress_.seconds());
    progress_.show(std::to_string(ended_) + " of " + counted(total_, "job") + ", " +
                   counted(failed_, "error") + ", " + std::to_string(rate) + "/s");
  }

  void sayWhatBecame() const {
    if (options_.quiet || (!options_.verbose && failed_ == 0)) return;
    const std::size_t done = ended_ - warned_ - failed_;
    say(counted(total_, "job") + ": " + std::to_string(done) + " done, " + std::to_string(warned_) +
        " with warnings, " + std::to_string(failed_) + " with errors, " + std::to_string(skipped_) +
        " skipped");
  }

  const Options& options_;
  const std::vector<Task>& tasks_;
  Report report_;
  ProgressLine progress_;
  std::vector<std::size_t> waiting_;
  std::vector<Worker> workers_;
  std::size_t total_ = 0;
  std::size_t ended_ = 0;
  std::size_t warned_ = 0;
  std::size_t failed_ = 0;
  std::size_t skipped_ = 0;
  bool reportHasFailed_ = false;
  ExitCode code_ = ExitCode::kDone;
};

}  // namespace

bool hasServedBatch(const Options& options) {
  return WorkerProcess::serve([&options](const Task& task) { return work(options, task); });
}

ExitCode runBatch(const Options& options, const std::vector<Task>& tasks) {
  return Batch(options, tasks).run();
}

}  // namespace quillpress::cli
