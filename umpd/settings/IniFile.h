#pragma once

#include <string>
#include <vector>

namespace quillpress::driver {

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
