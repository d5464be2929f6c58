#include "tests/umpd/harness/PrinterName.h"

#include <windows.h>
// After windows.h.
#include <winspool.h>

namespace quillpress::harness {

void pretendPrinterName(Library& library, const std::string& name) {
  library.replace(
      "GetPrinterA", [name](HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
        if (!::GetPrinterA(handle, level, buffer, size, needed)) return FALSE;
        reinterpret_cast<PRINTER_INFO_2A*>(buffer)->pPrinterName = const_cast<char*>(name.c_str());
        return TRUE;
      });
}

}  // namespace quillpress::harness
