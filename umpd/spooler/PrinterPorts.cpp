#include "umpd/spooler/PrinterPorts.h"

#include "umpd/win32/Text.h"

namespace quillpress {

bool isPrinterOnPort(std::wstring_view driverName, std::wstring_view portName, std::wstring_view soughtPort) {
  if (!equalsIgnoringCase(driverName, kDriverName)) return false;
  return equalsIgnoringCase(portName, soughtPort) ||
         equalsIgnoringCase(backslashesToCommas(portName), soughtPort);
}

}  // namespace quillpress
