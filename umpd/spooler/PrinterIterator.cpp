#include "umpd/spooler/PrinterIterator.h"

#include <algorithm>
#include <vector>

#include "umpd/win32/TryResize.h"

namespace quillpress {

bool iteratePrinters(PrinterIteratorCallback& callback) {
  constexpr DWORD kKinds = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  DWORD needed = 0;
  DWORD count = 0;
  EnumPrintersA(kKinds, nullptr, 2, nullptr, 0, &needed, &count);
  if (needed == 0) return false;
  std::vector<BYTE> buffer;
  if (!tryResize(buffer, needed)) return false;
  if (EnumPrintersA(kKinds, nullptr, 2, buffer.data(), needed, &needed, &count) == 0) return false;
  const auto* records = reinterpret_cast<const PRINTER_INFO_2A*>(buffer.data());
  const auto room = static_cast<DWORD>(buffer.size() / sizeof(PRINTER_INFO_2A));
  return std::any_of(records, records + std::min(count, room),
                     [&](const PRINTER_INFO_2A& each) { return callback.visit(each); });
}

}  // namespace quillpress
