#include "umpd/channel/LauncherProxy.h"

#include "umpd/rules/LauncherStruct.h"
#include "umpd/settings/InstallFolder.h"
#include "umpd/win32/AnsiText.h"
#include "umpd/win32/ProgramRunner.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/Windows.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {

LauncherProxy::LauncherProxy()
    : channel_(channelNames(windowsVersion().sessionPrefix(), kLauncherChannel, userName()), INFINITE) {}

bool LauncherProxy::startLauncher() const {
  if (isReceiverReady()) return true;
  const std::optional<std::wstring> path = installedFile(L"twsmsnd.exe");
  if (!path) return false;
  // The path is also the whole command line, unquoted: the application is named apart, so blanks in it do no
  // harm.
  ProgramRun run;
  run.application = *path;
  run.commandLine = *path;
  // The launcher shows its window when a message asks for it.
  run.showState = SW_HIDE;
  return startProgram(run);
}

bool LauncherProxy::sendStartPrint(const std::wstring& printerName) {
  // The record is filled before anybody is known to listen; it is sendRecord that asks.
  if (!channel_.openRecord()) return false;
  writeStartPrint(channel_.message(), toAnsi(printerName));
  return channel_.sendRecord();
}

bool LauncherProxy::sendStopPrint(const std::wstring& printerName, const std::wstring& documentName,
                                  const std::wstring& outputPath) {
  if (!channel_.openRecord()) return false;
  writeStopPrint(channel_.message(), toAnsi(printerName), toAnsi(documentName), toAnsi(outputPath));
  return channel_.sendRecord();
}

}  // namespace quillpress::driver
