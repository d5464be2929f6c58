#include "umpd/channel/LauncherProxy.h"

#include "umpd/rules/Trace.h"
#include "umpd/settings/Installation.h"
#include "umpd/settings/Registry.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/ProgramRunner.h"
#include "umpd/win32/SystemInformation.h"

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

MessageChannel::MessageChannel(ChannelNames names, std::size_t recordSize, unsigned long waitMilliseconds)
    : names_(std::move(names)), section_(names_.section, recordSize), waitMilliseconds_(waitMilliseconds) {}

bool MessageChannel::isReceiverReady() const {
  // The receiver keeps the mutex for as long as it listens, and the system closes it for one that dies. Only
  // its existence is asked: waiting for it would be waiting for the receiver's end.
  return NamedMutex::exists(names_.mutex);
}

bool MessageChannel::openRecord() {
  if (section_.openOrCreate()) return true;
  // Kept: "Aquire", by which the field searches traces (TraceTest.AMissingSectionIsToldAsAquire).
  QUILLPRESS_TRACE(L"Aquire failed\n");
  return false;
}

bool MessageChannel::sendRecord() const {
  if (!section_.isOpen()) return false;
  // Asked again here, since the receiver may have gone while the record was filled; without one the wait
  // below would never end.
  if (!isReceiverReady()) {
    QUILLPRESS_TRACE(L"IPC sendMsg isReceiverReady failed\n");
    return false;
  }
  // It must exist before the receiver can want to set it.
  NamedEvent acknowledged(names_.acknowledgeEvent);
  if (!acknowledged.create()) {
    showSystemErrorBox(L"IPC sendMsg create event failed");
    return false;
  }
  // The request is the receiver's own event and is only opened: one made here would be set with nobody
  // waiting.
  NamedEvent requested(names_.requestEvent);
  if (!requested.set()) {
    showSystemErrorBox(L"IPC sendMsg setting event failed");
    return false;
  }
  // Kept: only running out of time counts as a failure. The request is out by now, so a wait that fails
  // otherwise says nothing about the message (MessageChannelTest.AnyOtherEndOfTheWaitIsASuccess).
  if (acknowledged.wait(waitMilliseconds_) == WAIT_TIMEOUT) {
    QUILLPRESS_TRACE(L"IPC sendMsg listen.block failed\n");
    return false;
  }
  return true;
}

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
