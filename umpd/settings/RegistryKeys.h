#pragma once

#include <string>

#include "umpd/win32/Handles.h"

namespace quillpress::driver {

// The key of the front end in the registry of a user or of the machine. Below a user's, each printer has one
// of its own.
inline constexpr wchar_t kProductKey[] = L"Software\\Quillpress\\";

// Opens a key below a root; none when there is no such key or the access is refused.
RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access);

// The same, but makes the key when there is none, and tells whether it did.
RegistryKey openOrCreateKey(HKEY root, const std::wstring& path, REGSAM access, bool* isNew = nullptr);

}  // namespace quillpress::driver
