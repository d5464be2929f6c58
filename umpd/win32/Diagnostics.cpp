#include "umpd/win32/Diagnostics.h"

#include <array>
#include <cstdarg>
#include <cstdio>

#include "umpd/rules/Trace.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/Windows.h"

namespace quillpress::driver {
namespace {
// A service has no desktop that anybody sees; with this style the system shows its boxes on the user's.
constexpr UINT kStyle = MB_OK | MB_SERVICE_NOTIFICATION;
}  // namespace

void showErrorBox(const char* format, ...) {
  std::array<char, 2048> text{};
  va_list arguments;
  va_start(arguments, format);
  // Cut, since the texts that callers pass on may be of any length.
  vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  MessageBoxA(nullptr, text.data(), "Error", kStyle);
}

void showSystemErrorBox(std::wstring_view caption, std::wstring_view extraText) {
  // First of all, before any other call can change the last error.
  std::wstring body = systemMessage(GetLastError());
  if (!extraText.empty()) body.append(L"\n\n").append(extraText);
  MessageBoxW(nullptr, body.c_str(), std::wstring(caption).c_str(), kStyle);
}

void writeDriverDebugOutput(const std::string& text) {
  OutputDebugStringA(text.c_str());
}

void writeDriverDebugOutput(const std::wstring& text) {
  OutputDebugStringW(text.c_str());
}

void writeTrace(const std::wstring& text) {
  // A trace between a failure and the box that explains it must not change the explanation.
  const DWORD error = GetLastError();
  writeDriverDebugOutput(text);
  SetLastError(error);
}
}  // namespace quillpress::driver
