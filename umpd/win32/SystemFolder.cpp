#include "umpd/win32/SystemFolder.h"

#include <array>

#include "umpd/win32/Windows.h"

namespace quillpress {

std::wstring systemFolder() {
  std::array<wchar_t, MAX_PATH> folder{};
  const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
  if (length == 0 || length >= folder.size()) return {};
  return {folder.data(), length};
}

}  // namespace quillpress
