#pragma once

#include <cstddef>

#ifndef _WIN32
#include <pthread.h>
#endif

namespace quillpress::level3 {

// A thread of this library's own in its host's process: with a small stack, and all signals held back, which
// are for threads that know what to do with them. Not on Windows, whose compiler's standard library comes
// without threads.
class WorkerThread {
 public:
  using Work = void (*)(void* context);

  // Plenty for libdeflate and zlib, and little beside a thread's usual 8 MB where a process's address space
  // is limited.
  static constexpr std::size_t kStackSize = 256UL * 1024;

  // Whether there are threads here, and a second processor for them.
  static bool isOffered();

  WorkerThread() = default;
  WorkerThread(const WorkerThread&) = delete;
  WorkerThread& operator=(const WorkerThread&) = delete;

  // False when no thread can be had. REQUIRES: `work` throws nothing; once, and join() before the end
  bool start(Work work, void* context, std::size_t stackSize = kStackSize);
  // Waits for its end, if it was started.
  void join();

 private:
#ifndef _WIN32
  static void* run(void* self);

  Work work_ = nullptr;
  void* context_ = nullptr;
  pthread_t thread_{};
  bool isStarted_ = false;
#endif
};

}  // namespace quillpress::level3
