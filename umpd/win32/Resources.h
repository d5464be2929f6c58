#pragma once

#include <cstddef>
#include <exception>
#include <utility>
#include <vector>

#include "umpd/win32/Windows.h"

namespace quillpress::driver {
// Sole owner of a system handle. Traits name the handle's type, its value for "none", and how it is closed.
template <typename Traits>
class UniqueHandle {
 public:
  using Handle = typename Traits::Handle;

  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    reset(other.release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { reset(); }

  [[nodiscard]] Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Traits::none(); }

  [[nodiscard]] Handle release() { return std::exchange(handle_, Traits::none()); }

  void reset(Handle handle = Traits::none()) {
    const Handle old = std::exchange(handle_, handle);
    if (old != Traits::none()) Traits::close(old);
  }

  // For functions that store a handle through a pointer; whatever was owned is closed first.
  [[nodiscard]] Handle* receive() {
    reset();
    return &handle_;
  }

 private:
  Handle handle_ = Traits::none();
};

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

// Excludes the threads of one process from each other.
class CriticalSection {
 public:
  class Lock {
   public:
    explicit Lock(CriticalSection& section) : section_(&section.section_) { EnterCriticalSection(section_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { LeaveCriticalSection(section_); }

   private:
    CRITICAL_SECTION* section_;
  };

  CriticalSection() { InitializeCriticalSection(&section_); }
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;
  ~CriticalSection() { DeleteCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};

// Gives the buffer so many elements, all zero. False, with the buffer empty, when there is not that much
// memory: sizes that another program tells may be anything.
template <typename Element>
bool tryResize(std::vector<Element>& buffer, std::size_t size) {
  buffer.clear();
  try {
    buffer.resize(size);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}
}  // namespace quillpress::driver
