#include "umpd/spooler/Printer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "umpd/rules/PrinterNaming.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
template <std::size_t kSize>
void copyText(wchar_t (&field)[kSize], std::wstring_view text) {
  const std::wstring_view part = fitting(text, kSize);
  std::copy(part.begin(), part.end(), std::begin(field));
}

std::wstring wide(const char* text) {
  return text == nullptr ? std::wstring() : fromAnsi(text);
}
}  // namespace

DeviceMode fixedDeviceMode(std::wstring_view printerName) {
  DeviceMode result{};
  DEVMODEW& mode = result.mode;
  copyText(mode.dmDeviceName, lastComponent(printerName, L"\\"));
  // Of Windows NT 4.0, which every later one reads as well.
  mode.dmSpecVersion = 0x401;
  mode.dmDriverVersion = 0x400;
  mode.dmSize = sizeof(DEVMODEW);
  mode.dmDriverExtra = static_cast<WORD>(result.driverExtra.size());
  mode.dmFields = DM_ORIENTATION | DM_PAPERSIZE | DM_SCALE | DM_COPIES | DM_DEFAULTSOURCE | DM_PRINTQUALITY |
                  DM_COLOR | DM_TTOPTION | DM_FORMNAME;
  mode.dmOrientation = DMORIENT_PORTRAIT;
  // Kept: the number says letter and the name A4, and printers have been set up with both
  // (DeviceModeTest.HasItsFields).
  mode.dmPaperSize = DMPAPER_LETTER;
  copyText(mode.dmFormName, L"A4");
  mode.dmScale = 100;
  mode.dmCopies = 1;
  mode.dmDefaultSource = DMBIN_FORMSOURCE;  // the driver chooses the tray by the form
  mode.dmPrintQuality = 300;
  mode.dmColor = DMCOLOR_COLOR;
  mode.dmDuplex = DMDUP_SIMPLEX;  // not among the fields above, where it is the default anyway
  mode.dmTTOption = DMTT_SUBDEV;
  return result;
}

PrinterHandle openPrinter(const std::wstring& printerName, DWORD access) {
  // OpenPrinterW takes its text without const, so it gets a copy of its own.
  std::wstring name = printerName;
  // The blocks are finished output: any other type would have the print processor change them.
  wchar_t dataType[] = L"RAW";
  DeviceMode mode = fixedDeviceMode(printerName);
  PRINTER_DEFAULTSW defaults{dataType, &mode.mode, access};
  PrinterHandle printer;
  if (OpenPrinterW(name.data(), printer.receive(), &defaults) == 0) {
    // Nobody says that a failed call leaves the handle alone.
    static_cast<void>(printer.release());
    QUILLPRESS_TRACE(L"OpenPrinter(%s) failed - %s\n", name, systemMessage(GetLastError()));
  }
  return printer;
}

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

bool iteratePrinters(PrinterIteratorCallback& callback) {
  // Connections are not among the local printers, and a port-style name is mostly that of one.
  constexpr DWORD kKinds = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  DWORD needed = 0;
  DWORD count = 0;
  // Fails by design, and tells the size. Where there are no printers it succeeds and needs nothing.
  EnumPrintersA(kKinds, nullptr, 2, nullptr, 0, &needed, &count);
  if (needed == 0) return false;
  std::vector<BYTE> buffer;
  if (!tryResize(buffer, needed)) return false;
  if (EnumPrintersA(kKinds, nullptr, 2, buffer.data(), needed, &needed, &count) == 0) return false;
  const auto* records = reinterpret_cast<const PRINTER_INFO_2A*>(buffer.data());
  // No more records are read than the buffer can hold, whatever a spooler counts.
  const auto room = static_cast<DWORD>(buffer.size() / sizeof(PRINTER_INFO_2A));
  return std::any_of(records, records + std::min(count, room),
                     [&](const PRINTER_INFO_2A& each) { return callback.visit(each); });
}

FindPort::FindPort(std::wstring soughtPort) : soughtPort_(std::move(soughtPort)) {}

bool FindPort::visit(const PRINTER_INFO_2A& record) {
  if (!isPrinterOnPort(wide(record.pDriverName), wide(record.pPortName), soughtPort_)) return false;
  printerName_ = fitting(wide(record.pPrinterName), 260);
  return true;
}

std::optional<std::wstring> findPrinterOnPort(const std::wstring& port) {
  FindPort callback(port);
  if (!iteratePrinters(callback)) return std::nullopt;
  return callback.printerName();
}
}  // namespace quillpress::driver
