#include "umpd/win32/UserName.h"

#include <array>

#include "umpd/win32/Text.h"
#include "umpd/win32/Windows.h"

namespace quillpress {

std::wstring userName() {
  std::array<wchar_t, 260> name{};
  auto length = static_cast<DWORD>(name.size());
  if (GetUserNameW(name.data(), &length) == 0) return {};
  return std::wstring(textOfField(name.data(), name.size()));
}

}  // namespace quillpress
