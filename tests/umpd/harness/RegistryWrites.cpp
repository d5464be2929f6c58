#include "tests/umpd/harness/RegistryWrites.h"

#include <array>
#include <cstring>

namespace quillpress::harness {

RegistryWrites::RegistryWrites(Library& library) {
  library.replace(
      "RegSetValueExW",
      [this](HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) -> LONG {
        if (refuse && refuse(name)) return ERROR_ACCESS_DENIED;
        writes_.push_back({keyName(key), name, type, {data, data + size}});
        return ::RegSetValueExW(key, name, reserved, type, data, size);
      });
}

std::vector<std::wstring> RegistryWrites::names() const {
  std::vector<std::wstring> names;
  for (const RegistryWrite& write : writes_) names.push_back(write.name);
  return names;
}

size_t RegistryWrites::sizeOf(const std::wstring& name) const {
  size_t size = 0;
  for (const RegistryWrite& write : writes_) {
    if (write.name == name) size = write.data.size();
  }
  return size;
}

std::wstring keyName(HKEY key) {
  using NtQueryKey = LONG WINAPI(HANDLE key, int kind, void* information, ULONG size, ULONG* needed);
  constexpr int kKeyNameInformation = 3;
  struct {
    ULONG bytes;
    std::array<wchar_t, 1024> name;
  } information{};
  ULONG needed = 0;
  void* function = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryKey"));
  const LONG status = reinterpret_cast<NtQueryKey*>(function)(key, kKeyNameInformation, &information,
                                                              sizeof information, &needed);
  if (status != 0) return L"";
  return {information.name.data(), information.bytes / sizeof(wchar_t)};
}

}  // namespace quillpress::harness
