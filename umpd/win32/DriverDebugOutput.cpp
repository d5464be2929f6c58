#include "umpd/win32/DriverDebugOutput.h"

#include "umpd/win32/Windows.h"

namespace quillpress::driver {

void writeDriverDebugOutput(const std::string& text) {
  OutputDebugStringA(text.c_str());
}

void writeDriverDebugOutput(const std::wstring& text) {
  OutputDebugStringW(text.c_str());
}

}  // namespace quillpress::driver
