#include "umpd/settings/DefaultSettings.h"

#include "umpd/settings/InstallFolder.h"
#include "umpd/win32/ShellFolders.h"
#include "umpd/win32/Windows.h"

namespace quillpress {

std::vector<DefaultSetting> defaultSettings() {
  const DefaultFolders folders{applicationDataFolder(), documentsFolder(),
                               installedFile(L"twsview.exe").value_or(std::wstring())};
  if (!folders.applicationData.empty())
    CreateDirectoryW(defaultSaveFolder(folders.applicationData).c_str(), nullptr);
  return defaultSettings(folders);
}

}  // namespace quillpress
