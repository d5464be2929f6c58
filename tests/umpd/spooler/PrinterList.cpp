#include "tests/umpd/spooler/PrinterList.h"

#include <algorithm>

namespace quillpress::harness {
namespace {

std::size_t sizeOf(const std::optional<std::string>& text) {
  return text ? text->size() + 1 : 0;
}

// Puts the text at `end` and moves that behind it.
char* place(const std::optional<std::string>& text, char*& end) {
  if (!text) return nullptr;
  char* const begin = end;
  end = std::copy_n(text->c_str(), text->size() + 1, begin);
  return begin;
}

}  // namespace

PrinterList::PrinterList(Library& library) {
  library.replace("EnumPrintersA",
                  [this](DWORD flags, LPSTR server, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed,
                         LPDWORD returned) -> BOOL {
                    listings_.push_back({flags, server != nullptr, level, size});
                    return list(buffer, size, needed, returned);
                  });
}

BOOL PrinterList::list(BYTE* buffer, DWORD size, DWORD* needed, DWORD* returned) const {
  *returned = 0;
  *needed = 0;
  for (const Entry& entry : entries_) {
    *needed += static_cast<DWORD>(sizeof(PRINTER_INFO_2A) + sizeOf(entry.name) + sizeOf(entry.port) +
                                  sizeOf(entry.driver));
  }
  if (size < *needed || (fails_ && size != 0)) {
    SetLastError(size < *needed ? ERROR_INSUFFICIENT_BUFFER : ERROR_ACCESS_DENIED);
    return FALSE;
  }
  auto* record = reinterpret_cast<PRINTER_INFO_2A*>(buffer);
  auto* end = reinterpret_cast<char*>(record + entries_.size());
  for (const Entry& entry : entries_) {
    *record = {};
    record->pPrinterName = place(entry.name, end);
    record->pPortName = place(entry.port, end);
    record->pDriverName = place(entry.driver, end);
    ++record;
    ++*returned;
  }
  return TRUE;
}

}  // namespace quillpress::harness
