#include "umpd/win32/WindowsVersion.h"

#include "umpd/win32/Windows.h"

namespace quillpress::driver {

WindowsVersion windowsVersion() {
  OSVERSIONINFOA information{};
  information.dwOSVersionInfoSize = sizeof information;
  if (GetVersionExA(&information) == 0) return {};
  return {information.dwPlatformId == VER_PLATFORM_WIN32_NT, information.dwMajorVersion};
}

}  // namespace quillpress::driver
