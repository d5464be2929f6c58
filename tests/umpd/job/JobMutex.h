#pragma once

#include <string>

#include "tests/umpd/launcher/support/Handle.h"
#include "tests/umpd/launcher/support/Thread.h"

namespace quillpress::harness {

// The mutex by which the jobs of all processes take turns, on Windows 2000 and later.
inline constexpr wchar_t kJobMutexName[] = L"Global\\umdriver";

// Whether another thread could begin, write or end a job now.
bool isJobMutexFree(const std::wstring& name = kJobMutexName);

// Takes the mutex on a thread of its own, as the job of another process would: the test's thread has to wait.
class JobMutexHolder {
 public:
  explicit JobMutexHolder(const std::wstring& name = kJobMutexName);
  ~JobMutexHolder() { release(); }
  JobMutexHolder(const JobMutexHolder&) = delete;
  JobMutexHolder& operator=(const JobMutexHolder&) = delete;

  void release() const { SetEvent(stop_.get()); }

 private:
  Handle mutex_;
  Handle held_;
  Handle stop_;
  // The last member: its thread uses the others.
  Thread thread_;
};

}  // namespace quillpress::harness
