#pragma once

#include "umpd/win32/Resources.h"

namespace quillpress::launcher {

// Signalled when the program shall end: Ctrl+C, Ctrl+Break, its window closed, the user logging off.
// REQUIRES: one in a process
class StopSignal {
 public:
  StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;
  ~StopSignal();

  // An event that stays signalled.
  [[nodiscard]] HANDLE event() const { return stop_.get(); }

 private:
  static BOOL WINAPI onControl(DWORD kind);

  driver::KernelHandle stop_;
};

}  // namespace quillpress::launcher
