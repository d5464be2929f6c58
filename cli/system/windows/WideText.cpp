#include "cli/system/windows/WideText.h"

#include "cli/system/windows/Windows.h"

namespace quillpress::cli {

namespace {

// Folders get no longer names without the prefix, as there must be room for a short name of a file in them.
constexpr std::size_t kLongestPlainPath = MAX_PATH - 13;
constexpr std::wstring_view kPrefix = L"\\\\?\\";
constexpr std::wstring_view kShare = L"\\\\";

std::wstring fullPath(const std::wstring& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
  return full;
}

}  // namespace

std::wstring wideText(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string utf8Text(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

std::wstring widePath(const std::string& name) {
  std::wstring path = wideText(name);
  if (path.starts_with(kPrefix)) return path;
  // A short name in a deep folder is long, too.
  const std::wstring full = fullPath(path);
  if (full.size() <= kLongestPlainPath) return path;
  if (full.starts_with(kShare)) return std::wstring(kPrefix) + L"UNC" + full.substr(1);
  return std::wstring(kPrefix) + full;
}

}  // namespace quillpress::cli
