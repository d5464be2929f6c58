#pragma once

#include <array>
#include <string_view>

#include "umpd/spooler/Winspool.h"

namespace quillpress {

// A device mode and the room of the driver's own settings behind it, which stay zero.
struct DeviceMode {
  DEVMODEW mode;
  std::array<BYTE, 180> driverExtra;
};

static_assert(sizeof(DEVMODEW) == 220);
static_assert(sizeof(DeviceMode) == 400);

// The page that a printer is opened with: upright, 300 dpi, in colour.
DeviceMode fixedDeviceMode(std::wstring_view printerName);

}  // namespace quillpress
