#include "umpd/win32/SystemInformation.h"

#include "umpd/win32/Windows.h"
// Needs the header above.
#include <shlobj.h>

#include <array>

#include "umpd/rules/Text.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
namespace {
void freeItemList(ITEMIDLIST* list) {
  IMalloc* allocator = nullptr;
  // The shell's lists go back to the shell's allocator. CoTaskMemFree would need the library of COM.
  if (FAILED(SHGetMalloc(&allocator)) || allocator == nullptr) return;
  allocator->Free(list);
  allocator->Release();
}

std::wstring shellFolder(int folder) {
  ITEMIDLIST* list = nullptr;
  // Newer functions that give the path at once are missing in the shells of NT 4.0 and Windows 95.
  if (FAILED(SHGetSpecialFolderLocation(nullptr, folder, &list)) || list == nullptr) return {};
  std::array<wchar_t, MAX_PATH> path{};
  const bool known = SHGetPathFromIDListW(list, path.data()) != 0;
  freeItemList(list);
  return known ? std::wstring(path.data()) : std::wstring();
}
}  // namespace

WindowsVersion windowsVersion() {
  OSVERSIONINFOA information{};
  // The short structure, which Windows 95 and NT 4.0 without service packs know too.
  information.dwOSVersionInfoSize = sizeof information;
  // Since Windows 8.1 the answer is 6.2 for programs without a manifest, which decides none of the questions
  // asked here differently.
  if (GetVersionExA(&information) == 0) return {};
  return {information.dwPlatformId == VER_PLATFORM_WIN32_NT, information.dwMajorVersion};
}

std::wstring systemMessage(unsigned long errorCode) {
  wchar_t* text = nullptr;
  // Without inserts: the texts of some errors have placeholders, and there is nothing to put in.
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
      errorCode, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  const LocalMemory owner(text);
  if (length == 0 || text == nullptr) return L"Error string not found";
  return {text, length};
}

std::wstring userName() {
  std::array<wchar_t, 260> name{};
  auto length = static_cast<DWORD>(name.size());
  if (GetUserNameW(name.data(), &length) == 0) return {};
  return std::wstring(textOfField(name.data(), name.size()));
}

std::wstring systemFolder() {
  std::array<wchar_t, MAX_PATH> folder{};
  const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
  // A folder that does not fit is told by its length, and the buffer is then left alone.
  if (length == 0 || length >= folder.size()) return {};
  return {folder.data(), length};
}

std::wstring documentsFolder() {
  return shellFolder(CSIDL_PERSONAL);
}

std::wstring applicationDataFolder() {
  std::wstring folder = shellFolder(CSIDL_LOCAL_APPDATA);
  // Shells before version 5 know the roaming folder only.
  return folder.empty() ? shellFolder(CSIDL_APPDATA) : folder;
}

std::string toAnsi(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  // No flags: the system's substitutes are what users of the code page are used to.
  const int needed = WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) return {};
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

std::wstring fromAnsi(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  if (needed <= 0) return {};
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), needed);
  return wide;
}
}  // namespace quillpress::driver
