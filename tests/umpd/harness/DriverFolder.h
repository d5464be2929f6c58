#pragma once

#include <string>

#include "tests/umpd/harness/WindowsRelease.h"

namespace quillpress::harness {

// The folder beside the driver where twsconf.ini and the product's programs lie: the spooler's folder of
// printer drivers and, below it, that of the driver version of a Windows release. It is made when it is
// missing; twsconf.ini is not there at first and goes at the end.
class DriverFolder {
 public:
  explicit DriverFolder(const WindowsRelease& release = kWindows7);
  ~DriverFolder();
  DriverFolder(const DriverFolder&) = delete;
  DriverFolder& operator=(const DriverFolder&) = delete;

  // With a backslash at the end.
  [[nodiscard]] const std::wstring& path() const { return path_; }

  // The bytes of twsconf.ini, in the ANSI code page, or UTF-16 for the wide form.
  void writeIni(const std::string& text) const;
  void writeIni(const std::wstring& text) const;
  void removeIni() const;

 private:
  std::wstring path_;
};

}  // namespace quillpress::harness
