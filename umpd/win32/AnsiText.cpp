#include "umpd/win32/AnsiText.h"

#include "umpd/win32/Windows.h"

namespace quillpress::driver {

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
