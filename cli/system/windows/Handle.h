#pragma once

#include <utility>

#include "cli/system/Descriptor.h"
#include "cli/system/windows/Windows.h"

namespace quillpress::cli {

// Owns a handle and closes it. Empty when it was made from what a call that failed has given.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& other) noexcept : handle_(other.release()) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Handle() {
    if (handle_ != nullptr) CloseHandle(handle_);
  }

  [[nodiscard]] HANDLE get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] HANDLE release() { return std::exchange(handle_, nullptr); }

 private:
  HANDLE handle_ = nullptr;
};

// The handle behind a descriptor, which keeps it.
HANDLE handleOf(const Descriptor& file);

// A descriptor that takes the handle over. When the handle is empty the last error of the system becomes
// errno.
enum class Access { kReading, kWriting, kAppending };
Descriptor descriptorOf(Handle handle, Access access);

}  // namespace quillpress::cli
