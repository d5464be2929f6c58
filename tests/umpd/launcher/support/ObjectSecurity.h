#pragma once

#include <windows.h>

#include <optional>

namespace quillpress::harness {

// Who may use a kernel object.
struct ObjectSecurity {
  bool hasList = false;        // a discretionary list is present
  bool isListNull = false;     // and lets everybody do everything
  std::optional<DWORD> label;  // the integrity level
  DWORD labelPolicy = 0;       // what processes below that level may not do
};

inline constexpr DWORD kLowIntegrity = 0x1000;
inline constexpr DWORD kNoWriteUp = 1;

// REQUIRES: the handle has READ_CONTROL
ObjectSecurity securityOf(HANDLE object);

}  // namespace quillpress::harness
