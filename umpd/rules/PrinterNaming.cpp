#include "umpd/rules/PrinterNaming.h"

#include "umpd/rules/Text.h"

namespace quillpress::driver {

std::wstring PrinterNaming::effectiveName() const {
  if (!portResolvedName.empty()) return portResolvedName;
  return printerName.empty() ? kDefaultPrinterName : printerName;
}

std::wstring PrinterNaming::keyName() const {
  return backslashesToCommas(effectiveName());
}

bool isPortStyle(std::wstring_view name) {
  return name.starts_with(L',') || name.starts_with(L'\\');
}

bool isPrinterOnPort(std::wstring_view driverName, std::wstring_view portName, std::wstring_view soughtPort) {
  if (!equalsIgnoringCase(driverName, kDriverName)) return false;
  return equalsIgnoringCase(portName, soughtPort) ||
         equalsIgnoringCase(backslashesToCommas(portName), soughtPort);
}

}  // namespace quillpress::driver
