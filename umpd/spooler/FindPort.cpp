#include "umpd/spooler/FindPort.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "umpd/rules/PrinterNaming.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/TryResize.h"
#include "umpd/win32/AnsiText.h"

namespace quillpress::driver {
namespace {

std::wstring wide(const char* text) {
  return text == nullptr ? std::wstring() : fromAnsi(text);
}

}  // namespace

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
