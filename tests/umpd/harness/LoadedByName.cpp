#include "tests/umpd/harness/LoadedByName.h"

#include <algorithm>

#include "tests/umpd/harness/Text.h"

namespace quillpress::harness {
namespace {

// "C:\windows\system32\NETAPI32" and "Netapi32.dll" are both netapi32.dll.
std::wstring baseName(std::wstring_view path) {
  const size_t separator = path.find_last_of(L"\\/");
  if (separator != std::wstring_view::npos) path.remove_prefix(separator + 1);
  std::wstring name(path);
  if (name.find(L'.') == std::wstring::npos) name += L".dll";
  std::transform(name.begin(), name.end(), name.begin(),
                 [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c; });
  return name;
}

}  // namespace

LoadedByName::LoadedByName(Library& library) {
  const auto refuse = [this](std::wstring_view path) {
    if (!isMissing(path)) return false;
    SetLastError(ERROR_MOD_NOT_FOUND);
    return true;
  };
  library.replaceIfImported("LoadLibraryW", [=, this](LPCWSTR path) -> HMODULE {
    librariesLoaded_.emplace_back(path);
    return refuse(path) ? nullptr : ::LoadLibraryW(path);
  });
  library.replaceIfImported("LoadLibraryA", [=, this](LPCSTR path) -> HMODULE {
    librariesLoaded_.push_back(widen(path));
    return refuse(widen(path)) ? nullptr : ::LoadLibraryA(path);
  });
  library.replaceIfImported("LoadLibraryExW", [=, this](LPCWSTR path, HANDLE file, DWORD flags) -> HMODULE {
    librariesLoaded_.emplace_back(path);
    return refuse(path) ? nullptr : ::LoadLibraryExW(path, file, flags);
  });
  library.replaceIfImported("GetModuleHandleW", [=](LPCWSTR path) -> HMODULE {
    return path != nullptr && refuse(path) ? nullptr : ::GetModuleHandleW(path);
  });
  library.replaceIfImported("GetModuleHandleA", [=](LPCSTR path) -> HMODULE {
    return path != nullptr && refuse(widen(path)) ? nullptr : ::GetModuleHandleA(path);
  });
  library.replaceIfImported("GetProcAddress",
                            [this](HMODULE module, LPCSTR name) { return find(module, name); });
}

void LoadedByName::makeAbsent(const std::string& name) {
  replacements_.erase(name);
  absent_.insert(name);
}

void LoadedByName::makeMissing(const std::wstring& dll) {
  missing_.insert(baseName(dll));
}

bool LoadedByName::isMissing(std::wstring_view path) const {
  return missing_.count(baseName(path)) != 0;
}

FARPROC LoadedByName::find(HMODULE module, const char* name) {
  if (IS_INTRESOURCE(name)) return ::GetProcAddress(module, name);
  functionsAsked_.emplace_back(name);
  if (const auto found = replacements_.find(name); found != replacements_.end()) {
    return reinterpret_cast<FARPROC>(found->second->address());
  }
  if (absent_.count(name) != 0) {
    SetLastError(ERROR_PROC_NOT_FOUND);
    return nullptr;
  }
  return ::GetProcAddress(module, name);
}

}  // namespace quillpress::harness
