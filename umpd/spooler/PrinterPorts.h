#pragma once

#include <string>
#include <string_view>

namespace quillpress {

// The driver that all printers of this product have.
inline constexpr wchar_t kDriverName[] = L"Tarnwick Quillpress";

// Whether a printer of this product sits on the sought port. The port may be written with commas for
// backslashes, as in registry keys. Case does not matter.
bool isPrinterOnPort(std::wstring_view driverName, std::wstring_view portName, std::wstring_view soughtPort);

}  // namespace quillpress
