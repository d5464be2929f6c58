#pragma once

#include <string>

#include "umpd/win32/Handles.h"

namespace quillpress {

// Opens a key below a root; none when there is no such key or the access is refused.
RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access);

// The same, but makes the key when there is none, and tells whether it did.
RegistryKey openOrCreateKey(HKEY root, const std::wstring& path, REGSAM access, bool* isNew = nullptr);

}  // namespace quillpress
