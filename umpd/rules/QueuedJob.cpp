#include "umpd/rules/QueuedJob.h"

#include <algorithm>

#include "umpd/rules/Trace.h"

namespace quillpress::driver {
namespace {
struct BadStatus {
  std::uint32_t bit;
  const wchar_t* message;
};

constexpr BadStatus kBadStatuses[] = {
    {0x2, L"Error Status\n"},     {0x20, L"Offline Status\n"}, {0x40, L"Paperout Status\n"},
    {0x200, L"Blocked Status\n"}, {0x1, L"Paused Status\n"},
};

// A job that is being deleted is traced and no more: this driver's own removal looks the same.
constexpr std::uint32_t kDeleting = 0x4;

bool isStatusOk(std::uint32_t status) {
  if ((status & kDeleting) != 0) QUILLPRESS_TRACE(L"Deleting Status\n");
  bool ok = true;
  for (const BadStatus& bad : kBadStatuses) {
    if ((status & bad.bit) == 0) continue;
    QUILLPRESS_TRACE(L"%s", bad.message);
    ok = false;
  }
  return ok;
}
}  // namespace

const QueuedJob* lastInQueue(std::span<const QueuedJob> jobs) {
  const QueuedJob* last = nullptr;
  // Below 0, so that even a record of zeros, which the spooler has not filled, is better than no job.
  std::int32_t position = -1;
  for (const QueuedJob& job : jobs) {
    if (job.position <= position) continue;
    position = job.position;
    last = &job;
  }
  return last;
}

bool isStatusOk(std::span<const QueuedJob> jobs, std::uint32_t jobId) {
  const auto job =
      std::find_if(jobs.begin(), jobs.end(), [&](const QueuedJob& each) { return each.id == jobId; });
  // A job that is no longer listed has nothing that holds it up.
  return job == jobs.end() || isStatusOk(job->status);
}
}  // namespace quillpress::driver
