#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace quillpress::driver {
// A job in a printer's queue, as far as the front end looks at it.
struct QueuedJob {
  std::uint32_t id = 0;
  std::wstring documentName;
  std::uint32_t status = 0;   // bits as the spooler defines them
  std::int32_t position = 0;  // in the queue, from 1
};

// The job at the greatest position, the first of equals; null when there is none.
const QueuedJob* lastInQueue(std::span<const QueuedJob> jobs);

// Whether nothing holds the job up. A job that is not in the queue, or being deleted, is fine.
bool isStatusOk(std::span<const QueuedJob> jobs, std::uint32_t jobId);
}  // namespace quillpress::driver
