#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "umpd/win32/Resources.h"

namespace quillpress::driver {
// The security attributes that every event, mutex and section of the front end is created with: everybody
// has access, and where there are integrity labels, processes of low integrity have it too. They are
// needed until the object has been created.
class SecurityAttributes {
 public:
  SecurityAttributes();
  SecurityAttributes(const SecurityAttributes&) = delete;
  SecurityAttributes& operator=(const SecurityAttributes&) = delete;

  // Null, the system's default, on the 9x family and when the descriptor could not be made.
  [[nodiscard]] SECURITY_ATTRIBUTES* get() { return usable_ ? &attributes_ : nullptr; }

 private:
  bool openToEverybody();
  void allowLowIntegrity();

  SECURITY_DESCRIPTOR descriptor_{};
  LocalMemory label_;  // the descriptor refers into it
  SECURITY_ATTRIBUTES attributes_{};
  bool usable_ = false;
};

// An event that processes share by its name.
class NamedEvent {
 public:
  enum class Reset { kAutomatic, kManual };

  // What `wait` returns when the event cannot be opened.
  static constexpr DWORD kNotOpen = static_cast<DWORD>(-1);

  explicit NamedEvent(std::wstring name, Reset reset = Reset::kAutomatic);

  // Makes the event, not signalled; one that exists under the name is taken as it is.
  [[nodiscard]] bool create();

  // Opens an event that exists.
  [[nodiscard]] bool open();

  // Signals the event, opened if need be. One with manual reset is reset right after: a pulse.
  [[nodiscard]] bool set();

  // Waits for the event, opened if need be; returns the result of WaitForSingleObject, or kNotOpen.
  [[nodiscard]] DWORD wait(DWORD milliseconds);

 private:
  bool openIfNeeded() { return handle_ || open(); }

  std::wstring name_;
  Reset reset_;
  KernelHandle handle_;
};

// A mutex that processes share by its name.
class NamedMutex {
 public:
  enum class InitialOwner { kNobody, kCaller };

  // Owns the mutex for the length of a scope. One that a process has died with counts as taken.
  class Lock {
   public:
    // Waits without limit. REQUIRES: the mutex outlives the lock.
    explicit Lock(NamedMutex& mutex) : mutex_(&mutex), owned_(mutex.acquire()) {}
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() {
      if (owned_) mutex_->release();
    }

    // False when the mutex can be neither opened nor waited for.
    explicit operator bool() const { return owned_; }

   private:
    NamedMutex* mutex_;
    bool owned_;
  };

  explicit NamedMutex(std::wstring name);

  // Makes the mutex; one that exists under the name is opened, with its owner unchanged.
  bool create(InitialOwner owner = InitialOwner::kNobody);

  // Opens a mutex that exists.
  bool open();

  // Whether somebody holds a mutex of this name open.
  static bool exists(const std::wstring& name) { return NamedMutex(name).open(); }

 private:
  bool acquire();
  void release();

  std::wstring name_;
  KernelHandle handle_;
};

// Memory of the paging file that processes share by its name.
class SharedSection {
 public:
  SharedSection(std::wstring name, std::size_t size);

  // Opens the section, or makes it, zeroed, when there is none, and maps it. Fails when another kind of
  // object has the name, or when the pages of the section do not hold `size` bytes that can be written. Does
  // nothing when it is open already.
  [[nodiscard]] bool openOrCreate();

  [[nodiscard]] bool isOpen() const { return static_cast<bool>(view_); }

  // The bytes of the section. REQUIRES: isOpen()
  [[nodiscard]] std::span<std::byte> bytes() const { return {static_cast<std::byte*>(view_.get()), size_}; }

 private:
  [[nodiscard]] bool map();
  [[nodiscard]] bool isWritable() const;

  std::wstring name_;
  std::size_t size_;
  KernelHandle section_;
  MappedView view_;
};
}  // namespace quillpress::driver
