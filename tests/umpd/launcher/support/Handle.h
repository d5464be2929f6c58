#pragma once

#include <windows.h>

#include <memory>

namespace quillpress::harness {

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using Handle = std::unique_ptr<void, HandleCloser>;

}  // namespace quillpress::harness
