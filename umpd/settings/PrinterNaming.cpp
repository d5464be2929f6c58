#include "umpd/settings/PrinterNaming.h"

#include "umpd/settings/RegistryNames.h"
#include "umpd/win32/Text.h"

namespace quillpress {

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

}  // namespace quillpress
