#pragma once

#include <optional>
#include <string>

#include "umpd/spooler/PrinterIterator.h"

namespace quillpress {

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

}  // namespace quillpress
