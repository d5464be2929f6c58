#include "umpd/settings/Installation.h"

#include <algorithm>
#include <array>
#include <atomic>

#include "umpd/rules/SettingText.h"
#include "umpd/spooler/Printer.h"
#include "umpd/win32/SystemInformation.h"

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

// A longer section is cut by the system, which ends it with two zeros all the same.
constexpr std::size_t kSectionRoom = 5000;
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

IniFile::IniFile() : path_(installedFile(L"twsconf.ini").value_or(std::wstring())) {}

bool IniFile::overridesUserSettings() const {
  // Without a path the system would look into a file of its own choice.
  return !path_.empty() && GetPrivateProfileIntW(L"init", L"overrideUserSettings", 0, path_.c_str()) != 0;
}

std::vector<IniFile::Setting> IniFile::section(const std::wstring& name) const {
  if (path_.empty()) return {};
  std::wstring texts(kSectionRoom, L'\0');
  const DWORD length =
      GetPrivateProfileSectionW(name.c_str(), texts.data(), static_cast<DWORD>(texts.size()), path_.c_str());
  // The count leaves out the last zero, which ends the list and no text.
  texts.resize(length);
  std::vector<Setting> settings;
  for (const IniLine& line : parseIniSection(texts)) {
    settings.push_back({std::wstring(line.name), std::wstring(line.value)});
  }
  return settings;
}
}  // namespace quillpress::driver
