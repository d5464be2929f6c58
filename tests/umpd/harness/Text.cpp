#include "tests/umpd/harness/Text.h"

#include <windows.h>

#include <algorithm>

namespace quillpress::harness {

std::wstring widen(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                         static_cast<int>(wide.size()));
  wide.resize(static_cast<size_t>(length));
  return wide;
}

std::string narrow(std::wstring_view text) {
  constexpr size_t kMostBytes = 4;
  std::string bytes(kMostBytes * text.size(), '\0');
  const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<size_t>(length));
  return bytes;
}

std::wstring withReplaced(std::wstring text, wchar_t from, wchar_t to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

}  // namespace quillpress::harness
