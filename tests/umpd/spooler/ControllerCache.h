#pragma once

#include <windows.h>

#include <array>
#include <string>

#include "tests/umpd/launcher/support/Handle.h"

namespace quillpress::harness {

// The memory in which the processes of a session keep the name of the domain controller, as another process
// sees it. It is made when it is not there.
class ControllerCache {
 public:
  static constexpr std::size_t kSize = 522;

  explicit ControllerCache(const std::wstring& name = L"DomainControllerData");
  ~ControllerCache();
  ControllerCache(const ControllerCache&) = delete;
  ControllerCache& operator=(const ControllerCache&) = delete;

  [[nodiscard]] char state() const { return bytes()[0]; }
  [[nodiscard]] char reserved() const { return bytes()[1]; }
  [[nodiscard]] std::array<wchar_t, 260> nameField() const;
  [[nodiscard]] std::wstring name() const;

  void setState(char state) { bytes()[0] = state; }
  void setReserved(char reserved) { bytes()[1] = reserved; }

  // At most 260 characters; the rest of the field becomes zero.
  void setName(const std::wstring& name);

  // Whether any process has this memory.
  static bool exists(const std::wstring& name = L"DomainControllerData");

 private:
  [[nodiscard]] volatile char* bytes() const { return static_cast<volatile char*>(view_); }

  Handle section_;
  void* view_;
};

}  // namespace quillpress::harness
