#pragma once

#include "umpd/win32/Resources.h"

namespace quillpress::driver {
// A function of a system library, by names. Type is that of the function itself.
template <typename Type>
struct NamedFunction {
  const wchar_t* library;
  const char* name;
};

// A library of Windows that is loaded for as long as this object lives. The file comes from the system
// folder, whatever lies beside the printing program or its documents, unless the process has it loaded
// already.
class SystemLibrary {
 public:
  SystemLibrary() = default;
  explicit SystemLibrary(const wchar_t* fileName);

  explicit operator bool() const { return static_cast<bool>(library_); }

  // Null when the library is not loaded or lacks the function.
  template <typename Type>
  [[nodiscard]] Type* find(const NamedFunction<Type>& function) const {
    return reinterpret_cast<Type*>(address(function.name));
  }

 private:
  [[nodiscard]] void* address(const char* name) const;

  Library library_;
};

// Every function that is found by name at run time, because some Windows lacks it or because its library
// costs too much to load for every job. Beside each stands what happens without it.

// The registry of the user whom the thread impersonates. Without it: the key of the user's SID below
// HKEY_USERS.
inline constexpr NamedFunction<LONG WINAPI(REGSAM, HKEY*)> kRegOpenCurrentUser{L"Advapi32.DLL",
                                                                               "RegOpenCurrentUser"};

// The primary domain controller. Without it: the local machine knows the account.
inline constexpr NamedFunction<DWORD WINAPI(const wchar_t*, const wchar_t*, BYTE**)> kNetGetDCName{
    L"Netapi32.dll", "NetGetDCName"};
inline constexpr NamedFunction<DWORD WINAPI(void*)> kNetApiBufferFree{L"Netapi32.dll", "NetApiBufferFree"};

// From the client's identity to the spooler's and back. Without them: the client's identity stays.
inline constexpr NamedFunction<HANDLE WINAPI()> kRevertToPrinterSelf{L"spoolss.dll", "RevertToPrinterSelf"};
inline constexpr NamedFunction<BOOL WINAPI(HANDLE)> kImpersonatePrinterClient{L"spoolss.dll",
                                                                              "ImpersonatePrinterClient"};

// Whether this is a browser process that may write to few folders. Without it: it is none.
inline constexpr NamedFunction<HRESULT WINAPI(BOOL*)> kIEIsProtectedModeProcess{L"ieframe.dll",
                                                                                "IEIsProtectedModeProcess"};
}  // namespace quillpress::driver
