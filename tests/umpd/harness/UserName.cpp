#include "tests/umpd/harness/UserName.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>

namespace quillpress::harness {

void pretendUser(Library& library, const std::optional<std::wstring>& name) {
  // The size goes in as the buffer's length and comes out as the name's, both with the final zero.
  library.replace("GetUserNameW", [name](LPWSTR buffer, LPDWORD size) -> BOOL {
    if (!name) {
      SetLastError(ERROR_ACCESS_DENIED);
      return FALSE;
    }
    const DWORD needed = static_cast<DWORD>(name->size()) + 1;
    const bool fits = *size >= needed;
    if (fits) std::copy_n(name->c_str(), needed, buffer);
    if (!fits) SetLastError(ERROR_INSUFFICIENT_BUFFER);
    *size = needed;
    return fits;
  });
}

std::wstring currentUserName() {
  std::array<wchar_t, 260> name{};
  auto size = static_cast<DWORD>(name.size());
  EXPECT_TRUE(GetUserNameW(name.data(), &size)) << "error " << GetLastError();
  return name.data();
}

std::wstring ownUserName() {
  return L"tester" + std::to_wstring(GetCurrentProcessId());
}

}  // namespace quillpress::harness
