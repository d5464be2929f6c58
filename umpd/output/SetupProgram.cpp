#include "umpd/output/SetupProgram.h"

#include "umpd/rules/Trace.h"
#include "umpd/settings/Installation.h"
#include "umpd/settings/Registry.h"
#include "umpd/win32/ProgramRunner.h"

namespace quillpress::driver {
namespace {

bool startsOldLauncher(UserSid& user) {
  const UserRoot root(KEY_QUERY_VALUE | KEY_SET_VALUE, user);
  if (!root) return false;
  const RegistryKey key =
      openOrCreateKey(root.key(), L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", KEY_ALL_ACCESS);
  if (!key) return false;
  const std::optional<std::wstring> command = readCommandLine(key.get(), L"twsmsnd.exe");
  // Drivers of the old interface live in the folder 2, those of the newer one in 3.
  return command && command->find(L"\\2\\twsmsnd") != std::wstring::npos;
}

}  // namespace

void runSetupProgramIfNeeded(const std::wstring& printerName, UserSid& user) {
  if (!startsOldLauncher(user)) return;
  const std::optional<std::wstring> path = installedFile(L"twssetup.exe");
  if (!path) {
    QUILLPRESS_TRACE(L"execSetupProg getFilename failed\n");
    return;
  }
  ProgramRun run;
  run.application = *path;
  // The printer's name has blanks more often than not, so it is quoted.
  run.commandLine = *path + L" -printer=\"" + printerName + L"\" -installStartmenu";
  // The job's first block looks for the launcher that the program installs.
  run.waitForEnd = true;
  runProgram(run);
}

}  // namespace quillpress::driver
