#pragma once

#include <chrono>
#include <optional>

#include "umpd/win32/Windows.h"

namespace quillpress::launcher {

// How long may still be waited, in the milliseconds of the system's wait functions.
class Deadline {
 public:
  // Without a limit there is no deadline. REQUIRES: the limit is shorter than 24 days
  explicit Deadline(std::optional<std::chrono::milliseconds> limit)
      : start_(GetTickCount()), limit_(limit ? static_cast<DWORD>(limit->count()) : INFINITE) {}

  [[nodiscard]] DWORD remaining() const {
    if (limit_ == INFINITE) return INFINITE;
    // The count starts again from zero every 49 days; the difference does not notice.
    const DWORD elapsed = GetTickCount() - start_;
    return elapsed < limit_ ? limit_ - elapsed : 0;
  }

 private:
  DWORD start_;
  DWORD limit_;
};

}  // namespace quillpress::launcher
