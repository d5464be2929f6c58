#pragma once

#include <optional>
#include <string>

#include "umpd/spooler/PrinterHandle.h"

namespace quillpress::driver {

// Visits printers one after another.
class PrinterIteratorCallback {
 public:
  virtual ~PrinterIteratorCallback() = default;

  // The record is the spooler's and is valid during the call. True ends the iteration.
  virtual bool visit(const PRINTER_INFO_2A& record) = 0;
};

// Shows the callback every local printer and every connection until it has enough. Returns whether it had.
bool iteratePrinters(PrinterIteratorCallback& callback);

// Looks for the printer of this product that sits on a port.
class FindPort final : public PrinterIteratorCallback {
 public:
  explicit FindPort(std::wstring soughtPort);

  bool visit(const PRINTER_INFO_2A& record) override;

  // The printer's name, at most 259 characters; empty before it was found.
  [[nodiscard]] const std::wstring& printerName() const { return printerName_; }

 private:
  std::wstring soughtPort_;
  std::wstring printerName_;
};

// The name of the first such printer, or nothing.
std::optional<std::wstring> findPrinterOnPort(const std::wstring& port);

}  // namespace quillpress::driver
