#include "umpd/rules/PrinterNaming.h"

#include "umpd/rules/Text.h"

namespace quillpress::driver {
std::wstring PrinterNaming::effectiveName() const {
  if (!portResolvedName.empty()) return portResolvedName;
  return printerName.empty() ? kDefaultPrinterName : printerName;
}

std::wstring PrinterNaming::keyName() const {
  // A backslash parts keys in the registry, so a connection's name would become a tree of them.
  return backslashesToCommas(effectiveName());
}

bool isPortStyle(std::wstring_view name) {
  // Names of local printers begin with neither: the spooler allows no commas and no backslashes in them.
  return name.starts_with(L',') || name.starts_with(L'\\');
}

bool isPrinterOnPort(std::wstring_view driverName, std::wstring_view portName, std::wstring_view soughtPort) {
  // Printers of several makers may share a port, FILE: above all.
  if (!equalsIgnoringCase(driverName, kDriverName)) return false;
  return equalsIgnoringCase(portName, soughtPort) ||
         equalsIgnoringCase(backslashesToCommas(portName), soughtPort);
}
}  // namespace quillpress::driver
