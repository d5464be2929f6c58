#include "umpd/job/JobOutput.h"

#include <optional>
#include <utility>

#include "umpd/channel/LauncherProxy.h"
#include "umpd/output/SetFilename.h"
#include "umpd/rules/OutputPath.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/SystemLibrary.h"

namespace quillpress::driver {
namespace {
// Room for a virtualised path, which holds the folder of the application data twice.
constexpr std::size_t kPathSize = 780;
// Together some five seconds, in which a process comes up even while a log-on starts many others.
constexpr int kLauncherTries = 10;
constexpr DWORD kLauncherPauseMilliseconds = 540;

bool startLauncher(const LauncherProxy& launcher) {
  // The spooler of NT 4.0 has no desktop that the launcher could show anything on.
  if (windowsVersion().isNt4()) {
    showSystemErrorBox(L"Error:twsmsnd.exe is not running.  Please run it before printing to Quillpress.");
    return false;
  }
  QUILLPRESS_TRACE(L"Launcher not running, attempting to start it\n");
  for (int i = 0; i < kLauncherTries; ++i) {
    // Whether it was started does not matter, only whether it listens: another job may start it at the same
    // time.
    launcher.startLauncher();
    // A process that has been started does not listen yet.
    Sleep(kLauncherPauseMilliseconds);
    if (launcher.isReceiverReady()) return true;
  }
  showSystemErrorBox(L"Error:twsmsnd.exe is not running - and attempt to start it failed.");
  return false;
}

bool announce(const DriverSettings& settings, bool showStatus) {
  LauncherProxy launcher;
  if (!launcher.isReceiverReady() && !startLauncher(launcher)) return false;
  // The document is worth more than its announcement.
  if (showStatus) launcher.sendStartPrint(settings.naming().effectiveName());
  return true;
}

// Whether this is a browser process in protected mode, which may write to few folders.
bool isProtectedModeProcess() {
  // Loaded for the question only: other programs have no use for the browser's library.
  const SystemLibrary browser(kIEIsProtectedModeProcess.library);
  auto* const ask = browser.find(kIEIsProtectedModeProcess);
  BOOL isProtected = FALSE;
  return ask != nullptr && SUCCEEDED(ask(&isProtected)) && isProtected == TRUE;
}
}  // namespace

bool OutFile::create(const std::wstring& path) {
  // Readers are let in, so that a viewer can follow a long job; a second writer would mix two documents.
  file_.reset(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  // A system that hands out no handle at all has not even tried.
  begun_ = file_.get() != nullptr;
  if (!begun_) static_cast<void>(file_.release());
  return isCreated();
}

bool OutFile::write(std::span<const std::byte> bytes) {
  // Whether Windows fails or faults on bytes that are not there differs between its versions, so it is not
  // asked.
  const bool isReadable = bytes.data() != nullptr || bytes.empty();
  if (!file_ || !isReadable) return false;
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  // A full disk or a quota writes a part and may still report success, so the count is held against the
  // block.
  return WriteFile(file_.get(), bytes.data(), size, &written, nullptr) != 0 && written == size;
}

void OutFile::close() {
  file_.reset();
  begun_ = false;
}

bool JobOutput::begin(const DriverSettings& settings, const std::wstring& documentName) {
  const bool isFinishEventWanted = settings.getInt(L"FinishPrintEv", 0) != 0;
  // Who waits for the event shows the status itself.
  const bool showStatus = settings.getInt(L"showPrintStatusWin", 1) != 0 && !isFinishEventWanted;
  // Kept: "Inerface", by which the field searches traces (TraceTest.TextsKeepTheirSpelling).
  QUILLPRESS_TRACE(L"umdriver::write showUserInerface = %d\n", showStatus);
  if (!isFinishEventWanted && !announce(settings, showStatus)) return false;

  // After the launcher is up: the choice makes folders, which a job that fails there must not leave.
  std::optional<std::wstring> path = SetFilename(settings).chooseOutputFilename(documentName, kPathSize);
  if (!path) {
    showSystemErrorBox(L"setOutputFilename failed");
    return false;
  }
  path_ = *std::move(path);
  return create();
}

// Kept: a creation that fails is only felt by the write that follows, which then ends the job in the usual
// way (FailedCreationTest.OnAMissingDriveFailsTheWriteAndEndsTheJobAsUsual).
bool JobOutput::create() {
  if (file_.create(path_)) return true;
  // The box explains the first failure, whatever the browser is asked meanwhile.
  const DWORD error = GetLastError();
  // Asked after the failure only: a browser may have been given a folder that it can write to.
  if (isProtectedModeProcess()) createVirtualized();
  if (file_.isBegun()) return true;
  QUILLPRESS_TRACE(L"Error creating %s\n", path_);
  SetLastError(error);
  showSystemErrorBox(path_);
  return false;
}

void JobOutput::createVirtualized() {
  const std::wstring path = virtualizedPath(path_, applicationDataFolder());
  if (path.empty()) return;
  // The job goes on under this path, so that the launcher opens the file that was written.
  path_ = fitting(path, kPathSize);
  file_.create(path_);
}

bool JobOutput::write(std::span<const std::byte> block) {
  if (!file_.write(block)) {
    QUILLPRESS_TRACE(L"Error writing to %s\n", path_);
    return false;
  }
  // Counted in 32 bits, as callers read it; a file of more than 4 GiB wraps the count and is written all the
  // same.
  bytesWritten_ += static_cast<std::uint32_t>(block.size());
  return true;
}

void JobOutput::reset() {
  path_.clear();
  bytesWritten_ = 0;
}
}  // namespace quillpress::driver
