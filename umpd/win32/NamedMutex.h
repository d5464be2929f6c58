#pragma once

#include <string>

#include "umpd/win32/Handles.h"

namespace quillpress::driver {

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

}  // namespace quillpress::driver
