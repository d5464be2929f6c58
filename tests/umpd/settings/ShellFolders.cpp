#include "tests/umpd/settings/ShellFolders.h"

#include <array>

namespace quillpress::harness {

// By way of an item list: the other functions disagree with it about a backslash at the end.
std::wstring shellFolder(int folder) {
  LPITEMIDLIST items = nullptr;
  EXPECT_TRUE(SUCCEEDED(SHGetSpecialFolderLocation(nullptr, folder, &items)));
  std::array<wchar_t, MAX_PATH> path{};
  EXPECT_TRUE(SHGetPathFromIDListW(items, path.data()));
  CoTaskMemFree(items);
  return path.data();
}

void forgetShellFolders(Library& library, const std::set<int>& unknown) {
  library.replace("SHGetSpecialFolderLocation",
                  [unknown](HWND owner, int folder, LPITEMIDLIST* items) -> HRESULT {
                    if (unknown.count(folder) != 0) return E_FAIL;
                    return ::SHGetSpecialFolderLocation(owner, folder, items);
                  });
}

}  // namespace quillpress::harness
