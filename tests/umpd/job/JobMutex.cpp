#include "tests/umpd/job/JobMutex.h"

#include <gtest/gtest.h>

namespace quillpress::harness {

bool isJobMutexFree(const std::wstring& name) {
  return onAnotherThread<bool>([&] {
    const Handle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
    if (!mutex) return false;
    const bool isFree = WaitForSingleObject(mutex.get(), 0) == WAIT_OBJECT_0;
    if (isFree) ReleaseMutex(mutex.get());
    return isFree;
  });
}

JobMutexHolder::JobMutexHolder(const std::wstring& name)
    : mutex_(CreateMutexW(nullptr, FALSE, name.c_str())),
      held_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      thread_([this] {
        EXPECT_EQ(WaitForSingleObject(mutex_.get(), 10000), WAIT_OBJECT_0) << "the mutex is not free";
        SetEvent(held_.get());
        WaitForSingleObject(stop_.get(), INFINITE);
        ReleaseMutex(mutex_.get());
      }) {
  WaitForSingleObject(held_.get(), INFINITE);
}

}  // namespace quillpress::harness
