#include "tests/umpd/harness/Queue.h"

#include <algorithm>
#include <cstring>

namespace quillpress::harness {

Queue::Queue(Library& library) {
  library.replace("GetPrinterA",
                  [this](HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
                    if (!::GetPrinterA(printer, level, buffer, size, needed)) return FALSE;
                    const DWORD count = reported_.value_or(static_cast<DWORD>(jobs_.size()));
                    if (level == 2) reinterpret_cast<PRINTER_INFO_2A*>(buffer)->cJobs = count;
                    return TRUE;
                  });
  library.replace("EnumJobsA",
                  [this](HANDLE printer, DWORD first, DWORD count, DWORD level, LPBYTE buffer, DWORD size,
                         LPDWORD needed, LPDWORD returned) -> BOOL {
                    listings_.push_back({printer, first, count, level, size});
                    return list(first, count, buffer, size, needed, returned);
                  });
  library.replace("SetJobW", [this](HANDLE printer, DWORD job, DWORD level, LPBYTE, DWORD command) -> BOOL {
    controls_.push_back({printer, job, level, command});
    return TRUE;
  });
}

BOOL Queue::list(DWORD first, DWORD count, BYTE* buffer, DWORD size, DWORD* needed, DWORD* returned) const {
  const size_t begin = std::min<size_t>(first, jobs_.size());
  const size_t end = std::min<size_t>(begin + count, jobs_.size());
  *returned = 0;
  *needed = 0;
  for (size_t i = begin; i < end; ++i) {
    *needed += static_cast<DWORD>(sizeof(JOB_INFO_2A));
    if (jobs_[i].document) *needed += static_cast<DWORD>(jobs_[i].document->size()) + 1;
  }
  if (size < *needed) {
    SetLastError(sizeQueryError_);
    return FALSE;
  }
  if (listingError_ != 0) {
    SetLastError(listingError_);
    return FALSE;
  }

  // Records first, their texts behind them, as the spooler lays them out.
  auto* record = reinterpret_cast<JOB_INFO_2A*>(buffer);
  auto* text = reinterpret_cast<char*>(record + (end - begin));
  for (size_t i = begin; i < end; ++i, ++record, ++*returned) {
    *record = {};
    record->JobId = jobs_[i].id;
    record->Status = jobs_[i].status;
    record->Position = jobs_[i].position;
    if (!jobs_[i].document) continue;
    record->pDocument = text;
    std::memcpy(text, jobs_[i].document->c_str(), jobs_[i].document->size() + 1);
    text += jobs_[i].document->size() + 1;
  }
  return TRUE;
}

}  // namespace quillpress::harness
