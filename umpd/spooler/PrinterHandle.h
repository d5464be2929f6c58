#pragma once

#include "umpd/win32/Windows.h"
// The spooler's header needs the one above.
#include <winspool.h>

#include <array>
#include <string>
#include <string_view>

#include "umpd/win32/Handles.h"

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

}  // namespace quillpress::driver
