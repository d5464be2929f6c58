#include "umpd/win32/SystemLibrary.h"

#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
SystemLibrary::SystemLibrary(const wchar_t* fileName) {
  // Loading by the bare name then finds that very library and counts one user more, so it stays while it is
  // used.
  if (GetModuleHandleW(fileName) != nullptr) {
    library_.reset(LoadLibraryW(fileName));
    return;
  }
  const std::wstring folder = systemFolder();
  if (!folder.empty()) library_.reset(LoadLibraryW((folder + L"\\" + fileName).c_str()));
}

void* SystemLibrary::address(const char* name) const {
  // With a null module the system would search the program itself.
  return library_ ? reinterpret_cast<void*>(GetProcAddress(library_.get(), name)) : nullptr;
}
}  // namespace quillpress::driver
