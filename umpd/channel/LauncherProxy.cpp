#include "umpd/channel/LauncherProxy.h"

#include "umpd/rules/Trace.h"
#include "umpd/settings/Installation.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/ProgramRunner.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/Windows.h"

namespace quillpress::driver {

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

}  // namespace quillpress::driver
