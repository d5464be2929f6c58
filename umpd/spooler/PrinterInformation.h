#pragma once

#include <string>
#include <vector>

#include "umpd/spooler/PrinterHandle.h"

namespace quillpress::driver {

// What the spooler knows of one printer. The last record read stays until the next reading.
class PrinterInformation {
 public:
  // The spooler's level-2 record; null when there is no printer or the spooler refuses.
  const PRINTER_INFO_2A* read(HANDLE printer);

  // The printer's own name; empty when it cannot be read.
  std::wstring readName(HANDLE printer);

 private:
  std::vector<BYTE> buffer_;
};

}  // namespace quillpress::driver
