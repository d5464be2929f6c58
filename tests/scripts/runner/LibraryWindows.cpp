#ifdef _WIN32

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "tests/scripts/runner/Library.h"

namespace {

std::string& captured() {
  static std::string text;
  return text;
}

void __stdcall recordDebugString(const char* text) {
  captured() += text;
}

[[noreturn]] void fail(const char* what) {
  std::printf("script_tests: %s (error %lu)\n", what, GetLastError());
  std::exit(1);
}

template <typename Function>
Function functionOf(HMODULE module, const char* name) {
  const FARPROC address = GetProcAddress(module, name);
  if (address == nullptr) fail(name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

template <typename T>
T* at(HMODULE module, DWORD offset) {
  return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

// Redirects one imported function of the module, so that its calls come here and nobody else's do.
bool redirectImport(HMODULE module, const char* name, void* replacement) {
  const auto* dosHeader = at<IMAGE_DOS_HEADER>(module, 0);
  const auto* headers = at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dosHeader->e_lfanew));
  const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* dll = at<IMAGE_IMPORT_DESCRIPTOR>(module, imports); dll->Name != 0; ++dll) {
    auto* names = at<IMAGE_THUNK_DATA>(module, dll->OriginalFirstThunk);
    auto* addresses = at<IMAGE_THUNK_DATA>(module, dll->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* import = at<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(import->Name), name) != 0) continue;
      DWORD protection = 0;
      VirtualProtect(addresses, sizeof *addresses, PAGE_READWRITE, &protection);
      addresses->u1.Function = reinterpret_cast<DWORD>(replacement);
      VirtualProtect(addresses, sizeof *addresses, protection, &protection);
      return true;
    }
  }
  return false;
}

Library load() {
  const HMODULE module = LoadLibraryA("quillpress.dll");
  if (module == nullptr) fail("cannot load quillpress.dll");
  if (!redirectImport(module, "OutputDebugStringA", reinterpret_cast<void*>(&recordDebugString))) {
    fail("quillpress.dll does not import OutputDebugStringA");
  }
  return {functionOf<decltype(&PSOpen)>(module, "PSOpen"),
          functionOf<decltype(&PSConvertToPdf)>(module, "PSConvertToPdf"),
          functionOf<decltype(&PSGetPdfObjects)>(module, "PSGetPdfObjects"),
          functionOf<decltype(&PSGetErrorStr)>(module, "PSGetErrorStr"),
          functionOf<decltype(&PSClose)>(module, "PSClose")};
}

}  // namespace

const Library& library() {
  static const Library functions = load();
  return functions;
}

std::string takeMessages() {
  return std::exchange(captured(), {});
}

#endif
