#pragma once

#include <windows.h>

#include <memory>

namespace quillpress::harness {

struct HandleCloser {
  using pointer = HANDLE;  // NOLINT(readability-identifier-naming): std::unique_ptr looks for this name
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using Handle = std::unique_ptr<void, HandleCloser>;

}  // namespace quillpress::harness
