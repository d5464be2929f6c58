#include "tests/umpd/harness/WindowsRelease.h"

namespace quillpress::harness {

void pretend(Library& library, const WindowsRelease& release) {
  library.replaceIfImported("GetVersionExW", [](LPOSVERSIONINFOW) -> BOOL {
    ADD_FAILURE() << "the version is asked for with GetVersionExA";
    return FALSE;
  });
  library.replace("GetVersionExA", [release](LPOSVERSIONINFOA version) -> BOOL {
    if (!::GetVersionExA(version)) return FALSE;
    version->dwPlatformId = release.platform;
    version->dwMajorVersion = release.major;
    version->dwMinorVersion = release.minor;
    return TRUE;
  });
}

}  // namespace quillpress::harness
