#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "umpd/win32/Handles.h"

namespace quillpress::driver {

// Memory of the paging file that processes share by its name.
class SharedSection {
 public:
  SharedSection(std::wstring name, std::size_t size);

  // Opens the section, or makes it, zeroed, when there is none, and maps it. Fails when another kind of
  // object has the name, or when the pages of the section do not hold `size` bytes that can be written. Does
  // nothing when it is open already.
  [[nodiscard]] bool openOrCreate();

  [[nodiscard]] bool isOpen() const { return static_cast<bool>(view_); }

  // The bytes of the section. REQUIRES: isOpen()
  [[nodiscard]] std::span<std::byte> bytes() const { return {static_cast<std::byte*>(view_.get()), size_}; }

 private:
  [[nodiscard]] bool map();
  [[nodiscard]] bool isWritable() const;

  std::wstring name_;
  std::size_t size_;
  KernelHandle section_;
  MappedView view_;
};

}  // namespace quillpress::driver
