#pragma once

#include "umpd/spooler/Winspool.h"

namespace quillpress {

// Visits printers one after another.
class PrinterIteratorCallback {
 public:
  virtual ~PrinterIteratorCallback() = default;

  // The record is the spooler's and is valid during the call. True ends the iteration.
  virtual bool visit(const PRINTER_INFO_2A& record) = 0;
};

// Shows the callback every local printer and every connection until it has enough. Returns whether it had.
bool iteratePrinters(PrinterIteratorCallback& callback);

}  // namespace quillpress
