#include "postscript/level3/pdf/WorkerThread.h"

#ifndef _WIN32
#include <csignal>
#include <thread>
#include <utility>
#endif

namespace quillpress::level3 {

#ifdef _WIN32

bool WorkerThread::isOffered() {
  return false;
}

bool WorkerThread::start(Work /*work*/, void* /*context*/, std::size_t /*stackSize*/) {
  return false;
}

void WorkerThread::join() {}

#else

namespace {

// A new thread inherits what is held back.
class NoSignals {
 public:
  NoSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~NoSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  NoSignals(const NoSignals&) = delete;
  NoSignals& operator=(const NoSignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace

bool WorkerThread::isOffered() {
  return std::thread::hardware_concurrency() > 1;
}

bool WorkerThread::start(Work work, void* context, std::size_t stackSize) {
  work_ = work;
  context_ = context;
  const NoSignals quiet;
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  // std::thread cannot be told the size of its stack.
  isStarted_ = pthread_attr_setstacksize(&attributes, stackSize) == 0 &&
               pthread_create(&thread_, &attributes, &WorkerThread::run, this) == 0;
  pthread_attr_destroy(&attributes);
  return isStarted_;
}

void* WorkerThread::run(void* self) {
  const auto* const thread = static_cast<WorkerThread*>(self);
  thread->work_(thread->context_);
  return nullptr;
}

void WorkerThread::join() {
  if (std::exchange(isStarted_, false)) pthread_join(thread_, nullptr);
}

#endif

}  // namespace quillpress::level3
