#pragma once

#include "umpd/win32/Handles.h"
#include "umpd/win32/Windows.h"

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

}  // namespace quillpress::driver
