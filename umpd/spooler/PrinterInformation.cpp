#include "umpd/spooler/PrinterInformation.h"

#include "umpd/rules/Trace.h"
#include "umpd/rules/TryResize.h"
#include "umpd/win32/AnsiText.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {

const PRINTER_INFO_2A* PrinterInformation::read(HANDLE printer) {
  // A failed reading leaves no record, least of all that of another printer.
  buffer_.clear();
  if (printer == nullptr) {
    QUILLPRESS_TRACE(L"readPrinterInfo2 - No printer handle");
    return nullptr;
  }
  DWORD needed = 0;
  // Fails by design, and tells the size. The trace below reads the last error of this very call.
  GetPrinterA(printer, 2, nullptr, 0, &needed);
  if (needed < sizeof(PRINTER_INFO_2A)) {
    QUILLPRESS_TRACE(L"getPrinter failed: %s, bytes needed=%d\n", systemMessage(GetLastError()), needed);
    return nullptr;
  }
  if (!tryResize(buffer_, needed)) {
    QUILLPRESS_TRACE(L"readPrinterInfo2 - malloc failed");
    return nullptr;
  }
  if (GetPrinterA(printer, 2, buffer_.data(), needed, &needed) == 0) {
    QUILLPRESS_TRACE(L"readPrinterInfo2-failure to access the printer");
    return nullptr;
  }
  // The record's texts lie behind it in the same buffer, so it is kept as a whole.
  return reinterpret_cast<const PRINTER_INFO_2A*>(buffer_.data());
}

std::wstring PrinterInformation::readName(HANDLE printer) {
  const PRINTER_INFO_2A* record = read(printer);
  if (record == nullptr || record->pPrinterName == nullptr) return {};
  return fromAnsi(record->pPrinterName);
}

}  // namespace quillpress::driver
