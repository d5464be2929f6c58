#include "tests/umpd/launcher/support/InstalledLauncher.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <utility>

#include "tests/umpd/launcher/support/Process.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {

InstalledLauncher::InstalledLauncher(const Library& library, std::wstring log)
    : program_(folder_.path() + L"twsmsnd.exe"), log_(std::move(log)) {
  EXPECT_TRUE(CopyFileW((folderOf(library.module()) + L"twsmsnd.exe").c_str(), program_.c_str(), FALSE))
      << "error " << GetLastError();
  setOptions(L"--until-stopprint");
}

InstalledLauncher::~InstalledLauncher() {
  SetEnvironmentVariableW(L"TWSMSND_OPTIONS", nullptr);
  // A program that runs cannot be deleted.
  for (int tries = 0; tries < 1000 && DeleteFileW(program_.c_str()) == 0; ++tries) Sleep(10);
  EXPECT_FALSE(fileExists(program_)) << "the launcher does not leave";
}

void InstalledLauncher::setOptions(const std::wstring& options) const {
  const std::wstring all = L"--exit-after 50 --log \"" + log_ + L"\" " + options;
  SetEnvironmentVariableW(L"TWSMSND_OPTIONS", all.c_str());
}

std::vector<std::vector<std::wstring>> InstalledLauncher::lines(std::size_t least) const {
  std::vector<std::vector<std::wstring>> lines;
  for (int tries = 0; tries < 1000; ++tries, Sleep(10)) {
    lines = readLauncherLog(log_);
    if (lines.size() >= least) return lines;
  }
  ADD_FAILURE() << "the launcher has written down " << lines.size() << " lines";
  return lines;
}

}  // namespace quillpress::harness
