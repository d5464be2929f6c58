#include "umpd/win32/WindowsVersion.h"

#include "umpd/win32/Windows.h"

namespace quillpress::driver {

WindowsVersion windowsVersion() {
  OSVERSIONINFOA information{};
  // The short structure, which Windows 95 and NT 4.0 without service packs know too.
  information.dwOSVersionInfoSize = sizeof information;
  // Since Windows 8.1 the answer is 6.2 for programs without a manifest, which decides none of the questions
  // asked here differently.
  if (GetVersionExA(&information) == 0) return {};
  return {information.dwPlatformId == VER_PLATFORM_WIN32_NT, information.dwMajorVersion};
}

}  // namespace quillpress::driver
