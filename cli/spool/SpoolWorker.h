#pragma once

#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <vector>

#include "cli/spool/Spool.h"
#include "cli/system/Threads.h"

namespace quillpress::cli {

// Compresses data into the spool on a thread of its own while the converter runs on: both take about as long.
// Tasks run one by one in the order in which they are handed over, and only a few wait at a time, so memory
// stays low. While the worker lives, the spool is its own.
class SpoolWorker {
 public:
  // Puts one piece into the spool. Runs on the worker's thread.
  using Task = std::function<Spool::Piece(Spool&)>;

  // Stands for the piece of a task handed over, counted from 0.
  using Ticket = std::size_t;

  explicit SpoolWorker(Spool& spool);
  // Drops the tasks that still wait.
  ~SpoolWorker();
  SpoolWorker(const SpoolWorker&) = delete;
  SpoolWorker& operator=(const SpoolWorker&) = delete;

  // Hands over a task. Throws what an earlier one has thrown.
  Ticket submit(Task task);

  // Waits for all tasks and returns their pieces, by ticket. Throws what one has thrown. Called once.
  std::vector<Spool::Piece> finish();

 private:
  void work();
  void stop();

  Spool& spool_;
  Mutex mutex_;
  ConditionVariable changed_;
  std::deque<Task> waiting_;  // guarded by mutex_, as are the next two
  bool isClosed_ = false;
  std::exception_ptr failure_;
  Ticket tickets_ = 0;                // of the thread that hands over
  std::vector<Spool::Piece> pieces_;  // of the worker's thread until it has ended
  Thread thread_;                     // last, as it uses all of the above
};

}  // namespace quillpress::cli
