#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress::driver {
// Where the driver and its programs are installed, with a final backslash; nothing when the spooler does not
// tell. The answer is kept for the life of the process.
std::optional<std::wstring> installFolder();

// The path of a file there; nothing when it has 260 characters or more.
std::optional<std::wstring> installedFile(std::wstring_view name);

// The ini file that an administrator may put beside the driver.
class IniFile {
 public:
  struct Setting {
    std::wstring name;
    std::wstring value;
  };

  IniFile();

  // Whether its settings replace those that a user has made.
  [[nodiscard]] bool overridesUserSettings() const;

  // The settings of a section, as much of it as has room in 5,000 characters.
  [[nodiscard]] std::vector<Setting> section(const std::wstring& name) const;

 private:
  std::wstring path_;  // empty without an install folder
};
}  // namespace quillpress::driver
