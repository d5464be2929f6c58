#pragma once

#include <string>

#include "umpd/win32/Handles.h"

namespace quillpress::driver {

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

}  // namespace quillpress::driver
