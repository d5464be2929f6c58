#pragma once

#include <windows.h>
// After windows.h.
#include <winspool.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// A queue of jobs as the library sees it: GetPrinterA reports its length, EnumJobsA lists it, SetJobW is
// noted and does nothing. Wine's spooler knows no queue.
class Queue {
 public:
  struct Job {
    DWORD id = 0;
    std::optional<std::string> document;  // without one the record's pointer is null
    DWORD status = 0;
    DWORD position = 0;
  };

  // One call of EnumJobsA.
  struct Listing {
    HANDLE printer;
    DWORD first;
    DWORD count;
    DWORD level;
    DWORD size;
  };

  // One call of SetJobW.
  struct Control {
    HANDLE printer;
    DWORD job;
    DWORD level;
    DWORD command;
  };

  explicit Queue(Library& library);
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;

  void add(const Job& job) { jobs_.push_back(job); }
  void clear() { jobs_.clear(); }

  // The printer reports this number of jobs, whatever the number listed.
  void report(DWORD count) { reported_ = count; }

  // The question for the needed size fails with this error; the usual one is 122.
  void failSizeQuery(DWORD error) { sizeQueryError_ = error; }

  // The listing itself fails with this error.
  void failListing(DWORD error) { listingError_ = error; }

  [[nodiscard]] const std::vector<Listing>& listings() const { return listings_; }
  [[nodiscard]] const std::vector<Control>& controls() const { return controls_; }

 private:
  BOOL list(DWORD first, DWORD count, BYTE* buffer, DWORD size, DWORD* needed, DWORD* returned) const;

  std::vector<Job> jobs_;
  std::optional<DWORD> reported_;
  DWORD sizeQueryError_ = ERROR_INSUFFICIENT_BUFFER;
  DWORD listingError_ = 0;
  std::vector<Listing> listings_;
  std::vector<Control> controls_;
};

}  // namespace quillpress::harness
