#include "umpd/spooler/FindPort.h"

#include <utility>

#include "umpd/spooler/PrinterPorts.h"
#include "umpd/win32/AnsiText.h"
#include "umpd/win32/Text.h"

namespace quillpress {
namespace {

std::wstring wide(const char* text) {
  return text == nullptr ? std::wstring() : fromAnsi(text);
}

}  // namespace

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

}  // namespace quillpress
