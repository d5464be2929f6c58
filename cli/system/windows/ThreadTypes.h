#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

#include "cli/system/windows/Handle.h"
#include "cli/system/windows/Windows.h"

namespace quillpress::cli {

// What the standard library of this compiler leaves out: its threads would come with a library of their own.

class Mutex {
 public:
  Mutex() = default;
  Mutex(const Mutex&) = delete;
  Mutex& operator=(const Mutex&) = delete;
  ~Mutex() = default;

  void lock() { AcquireSRWLockExclusive(&lock_); }
  void unlock() { ReleaseSRWLockExclusive(&lock_); }

 private:
  friend class ConditionVariable;
  SRWLOCK lock_ = SRWLOCK_INIT;
};

class ConditionVariable {
 public:
  // REQUIRES: the lock is held.
  template <typename Condition>
  void wait(std::unique_lock<Mutex>& lock, Condition isMet) {
    while (!isMet()) SleepConditionVariableSRW(&variable_, &lock.mutex()->lock_, INFINITE, 0);
  }
  // By the name that the standard library's own has.
  void notify_all() {  // NOLINT(readability-identifier-naming)
    WakeAllConditionVariable(&variable_);
  }

 private:
  CONDITION_VARIABLE variable_ = CONDITION_VARIABLE_INIT;
};

class Thread {
 public:
  explicit Thread(std::function<void()> work);

  [[nodiscard]] bool joinable() const { return static_cast<bool>(thread_); }
  void join();

 private:
  // At an address that stays, as the thread reads it.
  std::unique_ptr<std::function<void()>> work_;
  Handle thread_;
};

template <typename Work>
Thread startThread(Work work) {
  return Thread(std::move(work));
}

}  // namespace quillpress::cli
