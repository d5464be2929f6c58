#pragma once

#include "umpd/win32/UniqueHandle.h"
#include "umpd/win32/Windows.h"

namespace quillpress {

struct KernelHandleTraits {
  using Handle = HANDLE;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { CloseHandle(handle); }
};

// Files alone are told "none" by the invalid value.
struct FileHandleTraits {
  using Handle = HANDLE;
  static Handle none() { return INVALID_HANDLE_VALUE; }
  static void close(Handle handle) { CloseHandle(handle); }
};

struct MappedViewTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static void close(Handle view) { UnmapViewOfFile(view); }
};

struct RegistryKeyTraits {
  using Handle = HKEY;
  static Handle none() { return nullptr; }
  static void close(Handle key) { RegCloseKey(key); }
};

struct LibraryTraits {
  using Handle = HMODULE;
  static Handle none() { return nullptr; }
  static void close(Handle library) { FreeLibrary(library); }
};

struct LocalMemoryTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static void close(Handle memory) { LocalFree(memory); }
};

using KernelHandle = UniqueHandle<KernelHandleTraits>;
using FileHandle = UniqueHandle<FileHandleTraits>;
using MappedView = UniqueHandle<MappedViewTraits>;
using RegistryKey = UniqueHandle<RegistryKeyTraits>;
using Library = UniqueHandle<LibraryTraits>;
using LocalMemory = UniqueHandle<LocalMemoryTraits>;

}  // namespace quillpress
