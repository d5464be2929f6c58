#include "settings/DefaultSettings.h"

#include "settings/InstallFolder.h"
#include "win32/ShellFolders.h"
#include "win32/Windows.h"

namespace quillpress {

std::vector<DefaultSetting> defaultSettings() {
  const DefaultFolders folders{applicationDataFolder(), documentsFolder(),
                               installedFile(L"twsview.exe").value_or(std::wstring())};
  if (!folders.applicationData.empty())
    CreateDirectoryW(defaultSaveFolder(folders.applicationData).c_str(), nullptr);
  return defaultSettings(folders);
}

}  // namespace quillpress
