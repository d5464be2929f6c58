#pragma once

namespace quillpress {

// The key of the front end in the registry of a user or of the machine. Below a user's, each printer has one
// of its own.
inline constexpr wchar_t kProductKey[] = L"Software\\Quillpress\\";

// The printer's name where nobody has given one.
inline constexpr wchar_t kDefaultPrinterName[] = L"Tarnwick Quillpress";

}  // namespace quillpress
