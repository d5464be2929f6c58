#pragma once

#include "umpd/win32/Windows.h"
// The spooler's header needs the one above.
#include <winspool.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/win32/Resources.h"

namespace quillpress::driver {
struct PrinterHandleTraits {
  using Handle = HANDLE;
  static Handle none() { return nullptr; }
  static void close(Handle printer) { ClosePrinter(printer); }
};

using PrinterHandle = UniqueHandle<PrinterHandleTraits>;

// A device mode and the room of the driver's own settings behind it, which stay zero.
struct DeviceMode {
  DEVMODEW mode;
  std::array<BYTE, 180> driverExtra;
};

static_assert(sizeof(DEVMODEW) == 220);
static_assert(sizeof(DeviceMode) == 400);

// The page that a printer is opened with: upright, 300 dpi, in colour.
DeviceMode fixedDeviceMode(std::wstring_view printerName);

// Opens a printer by its name for raw data with the front end's fixed device mode. Returns none, with the
// thread's last error, when the spooler refuses.
PrinterHandle openPrinter(const std::wstring& printerName, DWORD access);

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
