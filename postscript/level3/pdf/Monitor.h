#pragma once

#ifndef _WIN32
#include <condition_variable>
#include <mutex>
#endif

namespace quillpress::level3 {

#ifdef _WIN32

// Where there is one thread only nobody has to wait.
class Monitor {
 public:
  class Lock {
   public:
    explicit Lock(Monitor& /*monitor*/) {}
    void unlock() {}
    void lock() {}
    template <typename Condition>
    void wait(Condition /*condition*/) {}
  };
  void notifyAll() {}
};

#else

// What two threads share is changed within a Lock, and whoever waits for a change is told of it.
class Monitor {
 public:
  class Lock {
   public:
    explicit Lock(Monitor& monitor) : monitor_(monitor), lock_(monitor.mutex_) {}
    void unlock() { lock_.unlock(); }
    void lock() { lock_.lock(); }
    // Until condition() is true; meanwhile the lock is open.
    template <typename Condition>
    void wait(Condition condition) {
      monitor_.changed_.wait(lock_, condition);
    }

   private:
    Monitor& monitor_;
    std::unique_lock<std::mutex> lock_;
  };
  void notifyAll() { changed_.notify_all(); }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
};

#endif

}  // namespace quillpress::level3
