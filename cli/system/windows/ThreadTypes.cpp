#include "cli/system/windows/ThreadTypes.h"

#include <new>

namespace quillpress::cli {

namespace {

DWORD WINAPI runThread(void* work) {
  (*static_cast<std::function<void()>*>(work))();
  return 0;
}

}  // namespace

// The C runtime is a DLL here, which the system tells of each thread.
Thread::Thread(std::function<void()> work)
    : work_(std::make_unique<std::function<void()>>(std::move(work))),
      thread_(CreateThread(nullptr, 0, &runThread, work_.get(), 0, nullptr)) {
  if (!thread_) throw std::bad_alloc();
}

void Thread::join() {
  WaitForSingleObject(thread_.get(), INFINITE);
  thread_ = Handle();
}

}  // namespace quillpress::cli
