#pragma once

#include <string>
#include <string_view>

namespace quillpress::driver {
// How the front end calls one printer.
struct PrinterNaming {
  std::wstring printerName;       // as given, or as the settings say
  std::wstring portResolvedName;  // of the printer found by its port; else empty, at most 259 characters

  // The name that counts: the resolved one, else the own one, else the product's.
  [[nodiscard]] std::wstring effectiveName() const;

  // The name of the printer's registry key and of its section in the ini file.
  [[nodiscard]] std::wstring keyName() const;
};

// Whether a text names a printer by its port: "\\server\queue", or ",,server,queue" as registry keys write
// it.
bool isPortStyle(std::wstring_view name);

// The printer's name where nobody has given one.
inline constexpr wchar_t kDefaultPrinterName[] = L"Tarnwick Quillpress";

// The driver that all printers of this product have.
inline constexpr wchar_t kDriverName[] = L"Tarnwick Quillpress";

// Whether a printer of this product sits on the sought port. The port may be written with commas for
// backslashes, as in registry keys. Case does not matter.
bool isPrinterOnPort(std::wstring_view driverName, std::wstring_view portName, std::wstring_view soughtPort);
}  // namespace quillpress::driver
