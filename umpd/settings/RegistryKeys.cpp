#include "umpd/settings/RegistryKeys.h"

namespace quillpress::driver {

// What a failed call stores is no handle.

RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access) {
  HKEY key = nullptr;
  return RegistryKey(RegOpenKeyExW(root, path.c_str(), 0, access, &key) == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey openOrCreateKey(HKEY root, const std::wstring& path, REGSAM access, bool* isNew) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  // All missing keys of the path are made, so the product's own need not be made before a printer's.
  if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &key,
                      &disposition) != ERROR_SUCCESS) {
    return RegistryKey();
  }
  // Set on success alone; the system's word is the only one that holds when two jobs make the key at once.
  if (isNew != nullptr) *isNew = disposition == REG_CREATED_NEW_KEY;
  return RegistryKey(key);
}

}  // namespace quillpress::driver
