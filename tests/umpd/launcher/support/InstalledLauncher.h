#pragma once

#include <string>

#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/harness/Library.h"
#include "tests/umpd/launcher/support/LauncherLog.h"

namespace quillpress::harness {

// The delivered twsmsnd.exe in the folder of the driver, where the library starts it. It gets its options
// from the environment, writes its log to `log`, and is gone at the end.
class InstalledLauncher {
 public:
  InstalledLauncher(const Library& library, std::wstring log);
  ~InstalledLauncher();
  InstalledLauncher(const InstalledLauncher&) = delete;
  InstalledLauncher& operator=(const InstalledLauncher&) = delete;

  // For launchers that are started from now on. Without any they leave after a finished file.
  void setOptions(const std::wstring& options) const;

  // The log's lines when there are so many of them: they are written after the job has been let go.
  [[nodiscard]] std::vector<std::vector<std::wstring>> lines(std::size_t least) const;

 private:
  DriverFolder folder_;
  std::wstring program_;
  std::wstring log_;
};

}  // namespace quillpress::harness
