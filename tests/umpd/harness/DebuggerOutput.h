#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// What the library tells a debugger, one text a call.
class DebuggerOutput {
 public:
  explicit DebuggerOutput(Library& library);
  DebuggerOutput(const DebuggerOutput&) = delete;
  DebuggerOutput& operator=(const DebuggerOutput&) = delete;

  // The texts since the last call.
  [[nodiscard]] std::vector<std::wstring> take();

  // The texts since the last call, joined.
  [[nodiscard]] std::wstring takeJoined();

 private:
  std::vector<std::wstring> texts_;
};

}  // namespace quillpress::harness
