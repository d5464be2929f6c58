#pragma once

#include <windows.h>
// After windows.h.
#include <winspool.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// The printers of the machine as the library sees them. Texts are in the ANSI code page; a missing one is a
// null pointer in the record.
class PrinterList {
 public:
  struct Entry {
    std::optional<std::string> name;
    std::optional<std::string> port;
    std::optional<std::string> driver = "Tarnwick Quillpress";
  };

  // One call of EnumPrintersA.
  struct Listing {
    DWORD flags;
    bool hasServer;
    DWORD level;
    DWORD size;
  };

  explicit PrinterList(Library& library);
  PrinterList(const PrinterList&) = delete;
  PrinterList& operator=(const PrinterList&) = delete;

  void add(const Entry& entry) { entries_.push_back(entry); }

  // The listing itself fails, after the question for its size.
  void failListing() { fails_ = true; }

  [[nodiscard]] const std::vector<Listing>& listings() const { return listings_; }

 private:
  BOOL list(BYTE* buffer, DWORD size, DWORD* needed, DWORD* returned) const;

  std::vector<Entry> entries_;
  bool fails_ = false;
  std::vector<Listing> listings_;
};

}  // namespace quillpress::harness
