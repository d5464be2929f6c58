#pragma once

#include "umpd/win32/Handles.h"

namespace quillpress {

// A function of a system library, by names. Type is that of the function itself.
template <typename Type>
struct NamedFunction {
  const wchar_t* library;
  const char* name;
};

// A library of Windows that is loaded for as long as this object lives. The file comes from the system
// folder, whatever lies beside the printing program or its documents, unless the process has it loaded
// already.
class SystemLibrary {
 public:
  SystemLibrary() = default;
  explicit SystemLibrary(const wchar_t* fileName);

  explicit operator bool() const { return static_cast<bool>(library_); }

  // Null when the library is not loaded or lacks the function.
  template <typename Type>
  [[nodiscard]] Type* find(const NamedFunction<Type>& function) const {
    return reinterpret_cast<Type*>(address(function.name));
  }

 private:
  [[nodiscard]] void* address(const char* name) const;

  Library library_;
};

}  // namespace quillpress
