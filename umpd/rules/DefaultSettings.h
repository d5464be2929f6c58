#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillpress::driver {
// A setting that a printer has from its first use on.
struct DefaultSetting {
  std::wstring name;
  int number = 0;
  std::optional<std::wstring> text;  // instead of the number
};

// The folders that the defaults depend on; empty where the system does not know one.
struct DefaultFolders {
  std::wstring applicationData;
  std::wstring documents;
  std::wstring viewer;  // the path of the viewer, empty when it is too long
};

// The folder for output files of users who have not chosen one.
std::wstring defaultSaveFolder(const std::wstring& applicationData);

// All of them in the order in which they are written.
std::vector<DefaultSetting> defaultSettings(const DefaultFolders& folders);
}  // namespace quillpress::driver
