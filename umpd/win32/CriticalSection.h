#pragma once

#include "umpd/win32/Windows.h"

namespace quillpress::driver {

// Excludes the threads of one process from each other.
class CriticalSection {
 public:
  class Lock {
   public:
    explicit Lock(CriticalSection& section) : section_(&section.section_) { EnterCriticalSection(section_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { LeaveCriticalSection(section_); }

   private:
    CRITICAL_SECTION* section_;
  };

  CriticalSection() { InitializeCriticalSection(&section_); }
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;
  ~CriticalSection() { DeleteCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};

}  // namespace quillpress::driver
