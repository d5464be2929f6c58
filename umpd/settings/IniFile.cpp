#include "umpd/settings/IniFile.h"

#include "umpd/rules/SettingText.h"
#include "umpd/settings/InstallFolder.h"
#include "umpd/win32/Windows.h"

namespace quillpress::driver {
namespace {

// A longer section is cut by the system, which ends it with two zeros all the same.
constexpr std::size_t kSectionRoom = 5000;

}  // namespace

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
