#pragma once

#include <string>

#include "umpd/spooler/PrinterHandle.h"

namespace quillpress {

// Opens a printer by its name for raw data with the front end's fixed device mode. Returns none, with the
// thread's last error, when the spooler refuses.
PrinterHandle openPrinter(const std::wstring& printerName, DWORD access);

}  // namespace quillpress
