#include "umpd/win32/ShellFolders.h"

#include "umpd/win32/Windows.h"
// Needs the header above.
#include <shlobj.h>

#include <array>

namespace quillpress {
namespace {

void freeItemList(ITEMIDLIST* list) {
  IMalloc* allocator = nullptr;
  if (FAILED(SHGetMalloc(&allocator)) || allocator == nullptr) return;
  allocator->Free(list);
  allocator->Release();
}

std::wstring shellFolder(int folder) {
  ITEMIDLIST* list = nullptr;
  if (FAILED(SHGetSpecialFolderLocation(nullptr, folder, &list)) || list == nullptr) return {};
  std::array<wchar_t, MAX_PATH> path{};
  const bool known = SHGetPathFromIDListW(list, path.data()) != 0;
  freeItemList(list);
  return known ? std::wstring(path.data()) : std::wstring();
}

}  // namespace

std::wstring documentsFolder() {
  return shellFolder(CSIDL_PERSONAL);
}

std::wstring applicationDataFolder() {
  std::wstring folder = shellFolder(CSIDL_LOCAL_APPDATA);
  return folder.empty() ? shellFolder(CSIDL_APPDATA) : folder;
}

}  // namespace quillpress
