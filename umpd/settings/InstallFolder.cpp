#include "umpd/settings/InstallFolder.h"

#include <algorithm>
#include <array>
#include <atomic>

#include "umpd/spooler/PrinterHandle.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kPathSize = 260;

// Threads that race for the first use store the same text.
std::array<wchar_t, 2 * kPathSize> knownFolder{};
std::atomic<bool> isFolderKnown = false;

std::wstring askForFolder() {
  std::array<wchar_t, kPathSize> folder{};
  DWORD needed = 0;
  // The spooler's folder, not this library's own: programs may load the library from anywhere.
  if (GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder.data()), sizeof folder,
                                 &needed) == 0) {
    return {};
  }
  return std::wstring(folder.data()).append(windowsVersion().driverSubfolder());
}

}  // namespace

std::optional<std::wstring> installFolder() {
  if (!isFolderKnown) {
    const std::wstring folder = askForFolder();
    // Not remembered: a spooler that is just starting answers the next time.
    if (folder.empty()) return std::nullopt;
    std::copy(folder.begin(), folder.end(), knownFolder.begin());
    // Only now, so that who sees the flag sees all of the text.
    isFolderKnown = true;
  }
  return knownFolder.data();
}

std::optional<std::wstring> installedFile(std::wstring_view name) {
  std::optional<std::wstring> path = installFolder();
  if (!path) return std::nullopt;
  path->append(name);
  if (path->size() >= kPathSize) return std::nullopt;
  return path;
}

}  // namespace quillpress::driver
