#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

struct RegistryWrite {
  std::wstring key;  // its full name as the kernel spells it: \Registry\User\...
  std::wstring name;
  DWORD type = 0;
  std::vector<BYTE> data;
};

// The values that the library writes, in order. They are written for real, unless `refuse` says otherwise.
class RegistryWrites {
 public:
  explicit RegistryWrites(Library& library);
  RegistryWrites(const RegistryWrites&) = delete;
  RegistryWrites& operator=(const RegistryWrites&) = delete;

  [[nodiscard]] const std::vector<RegistryWrite>& all() const { return writes_; }
  [[nodiscard]] std::vector<std::wstring> names() const;

  // The bytes that were written as the value of this name at last; 0 when it was not written.
  [[nodiscard]] size_t sizeOf(const std::wstring& name) const;

  void clear() { writes_.clear(); }

  // Writing a value for whose name this answers true fails with "access denied".
  std::function<bool(const std::wstring& name)> refuse;

 private:
  std::vector<RegistryWrite> writes_;
};

// The full name of an open key, as the kernel spells it.
std::wstring keyName(HKEY key);

}  // namespace quillpress::harness
