#include "cli/spool/SpoolWorker.h"

#include <mutex>
#include <utility>

namespace quillpress::cli {

namespace {

// One that waits while one runs is enough to keep the thread busy; each may hold a whole image.
constexpr std::size_t kMostWaiting = 2;

}  // namespace

SpoolWorker::SpoolWorker(Spool& spool) : spool_(spool), thread_(startThread([this] { work(); })) {}

SpoolWorker::~SpoolWorker() {
  {
    const std::lock_guard guard(mutex_);
    // Nobody wants their pieces any more.
    waiting_.clear();
  }
  stop();
}

SpoolWorker::Ticket SpoolWorker::submit(Task task) {
  std::unique_lock lock(mutex_);
  // A worker that has failed takes nothing more, so waiting for it would never end.
  changed_.wait(lock, [this] { return waiting_.size() < kMostWaiting || failure_; });
  if (failure_) std::rethrow_exception(failure_);
  waiting_.push_back(std::move(task));
  changed_.notify_all();
  return tickets_++;
}

std::vector<Spool::Piece> SpoolWorker::finish() {
  stop();
  if (failure_) std::rethrow_exception(failure_);
  return std::move(pieces_);
}

void SpoolWorker::stop() {
  {
    const std::lock_guard guard(mutex_);
    isClosed_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

// What the thread does: one task after the other until there are no more, or one fails.
void SpoolWorker::work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return !waiting_.empty() || isClosed_; });
    if (waiting_.empty()) return;
    const Task task = std::move(waiting_.front());
    waiting_.pop_front();
    changed_.notify_all();
    // A task takes long, and the other thread must be able to hand over the next.
    lock.unlock();
    try {
      pieces_.push_back(task(spool_));
    } catch (...) {
      lock.lock();
      failure_ = std::current_exception();
      changed_.notify_all();
      return;
    }
    lock.lock();
  }
}

}  // namespace quillpress::cli
