#include "umpd/win32/DriverDebugOutput.h"

#include "umpd/rules/Trace.h"
#include "umpd/win32/Windows.h"

namespace quillpress::driver {

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
