#pragma once

#include <array>
#include <ostream>
#include <string>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// A release of Windows as GetVersionExA tells it.
struct WindowsRelease {
  const char* name;
  unsigned long platform;
  unsigned long major;
  unsigned long minor;

  [[nodiscard]] bool is9x() const { return platform == VER_PLATFORM_WIN32_WINDOWS; }
  [[nodiscard]] bool isNt4() const { return !is9x() && major == 4; }
};

inline constexpr WindowsRelease kWindows98{"Windows98", VER_PLATFORM_WIN32_WINDOWS, 4, 10};
inline constexpr WindowsRelease kWindowsNt4{"WindowsNt4", VER_PLATFORM_WIN32_NT, 4, 0};
inline constexpr WindowsRelease kWindows2000{"Windows2000", VER_PLATFORM_WIN32_NT, 5, 0};
inline constexpr WindowsRelease kWindowsXp{"WindowsXp", VER_PLATFORM_WIN32_NT, 5, 1};
inline constexpr WindowsRelease kWindowsVista{"WindowsVista", VER_PLATFORM_WIN32_NT, 6, 0};
inline constexpr WindowsRelease kWindows7{"Windows7", VER_PLATFORM_WIN32_NT, 6, 1};
inline constexpr WindowsRelease kWindows10{"Windows10", VER_PLATFORM_WIN32_NT, 10, 0};

// For ::testing::ValuesIn.
inline constexpr std::array kEveryWindows{kWindows98,    kWindowsNt4, kWindows2000, kWindowsXp,
                                          kWindowsVista, kWindows7,   kWindows10};
inline constexpr std::array kNtFamily{kWindowsNt4,   kWindows2000, kWindowsXp,
                                      kWindowsVista, kWindows7,    kWindows10};
inline constexpr std::array kWindowsWithNamespaces{kWindows2000, kWindowsXp, kWindowsVista, kWindows7,
                                                   kWindows10};

// Has the library believe that it runs on `release`. Everything else stays Wine's: what follows from the
// version outside the library (the folder names of the spooler, say) does not change.
void pretend(Library& library, const WindowsRelease& release);

// Names the cases of a parametrised test: INSTANTIATE_TEST_SUITE_P(Releases, SomeTest,
// ::testing::ValuesIn(kEveryWindows), releaseName).
inline std::string releaseName(const ::testing::TestParamInfo<WindowsRelease>& info) {
  return info.param.name;
}

inline std::ostream& operator<<(std::ostream& out, const WindowsRelease& release) {
  return out << release.name;
}

}  // namespace quillpress::harness
