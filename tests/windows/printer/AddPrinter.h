#pragma once

#include <windows.h>
// After windows.h.
#include <winspool.h>

#include <string>

namespace quillpress::testing {

// Adds a printer to Wine's spooler, and its driver first if need be, and opens it with all rights. Null, with
// the last error, when that fails. Whoever asked for it calls DeletePrinter and ClosePrinter.
HANDLE addPrinter(std::wstring name, std::wstring driver, std::wstring port);

}  // namespace quillpress::testing
