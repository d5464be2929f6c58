// How a job's blocks reach the output file.

#include "umpd/channel/LauncherProxy.h"
#include "umpd/job/ProtectedMode.h"
#include "umpd/job/UmDriver.h"
#include "umpd/output/SetFilename.h"
#include "umpd/rules/OutputPath.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/ErrorBox.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kOutputPathSize = 780;
constexpr int kLauncherTries = 10;
constexpr DWORD kLauncherPauseMilliseconds = 540;

}  // namespace

bool UmDriver::write(std::span<const std::byte> bytes) {
  const NamedMutex::Lock lock(jobMutex_);
  if (!lock) return false;
  if (passThrough_ && jobPrinter_ != nullptr) return writeToPrinter(bytes);
  if (!outFile_.isBegun() && !beginOutput()) return false;
  if (!outFile_.write(bytes)) {
    trace(L"Error writing to %s\n", outputPath_.c_str());
    return false;
  }
  bytesWritten_ += static_cast<std::uint32_t>(bytes.size());
  return true;
}

bool UmDriver::writeToPrinter(std::span<const std::byte> bytes) {
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  // The spooler only reads, though its declaration does not say so.
  void* const data = const_cast<std::byte*>(bytes.data());
  return WritePrinter(jobPrinter_, data, size, &written) != 0 && written == size;
}

bool UmDriver::beginOutput() {
  const bool isFinishEventWanted = settings_.getInt(L"FinishPrintEv", 0) != 0;
  // Who waits for the event shows the status itself.
  const bool showStatus = settings_.getInt(L"showPrintStatusWin", 1) != 0 && !isFinishEventWanted;
  trace(L"umdriver::write showUserInerface = %d\n", showStatus ? 1 : 0);
  if (!isFinishEventWanted && !announce(showStatus)) return false;

  std::optional<std::wstring> path =
      SetFilename(settings_).chooseOutputFilename(documentName_, kOutputPathSize);
  if (!path) {
    showSystemErrorBox(L"setOutputFilename failed");
    return false;
  }
  outputPath_ = *std::move(path);
  return createOutputFile();
}

bool UmDriver::announce(bool showStatus) {
  LauncherProxy launcher;
  if (!launcher.isReceiverReady() && !startLauncher(launcher)) return false;
  // The document is worth more than its announcement.
  if (showStatus) launcher.sendStartPrint(settings_.naming().effectiveName());
  return true;
}

bool UmDriver::startLauncher(const LauncherProxy& launcher) {
  // The spooler of NT 4.0 has no desktop that the launcher could show anything on.
  if (windowsVersion().isNt4()) {
    showSystemErrorBox(L"Error:twsmsnd.exe is not running.  Please run it before printing to Quillpress.");
    return false;
  }
  trace(L"Launcher not running, attempting to start it\n");
  for (int i = 0; i < kLauncherTries; ++i) {
    launcher.startLauncher();
    Sleep(kLauncherPauseMilliseconds);
    if (launcher.isReceiverReady()) return true;
  }
  showSystemErrorBox(L"Error:twsmsnd.exe is not running - and attempt to start it failed.");
  return false;
}

// Kept: a creation that fails is only felt by the write that follows, which then ends the job in the usual
// way.
bool UmDriver::createOutputFile() {
  if (outFile_.create(outputPath_)) return true;
  const DWORD error = GetLastError();
  if (isProtectedModeProcess()) createVirtualizedFile();
  if (outFile_.isBegun()) return true;
  trace(L"Error creating %s\n", outputPath_.c_str());
  SetLastError(error);
  showSystemErrorBox(outputPath_);
  return false;
}

void UmDriver::createVirtualizedFile() {
  const std::wstring path = virtualizedPath(outputPath_, applicationDataFolder());
  if (path.empty()) return;
  outputPath_ = fitting(path, kOutputPathSize);
  outFile_.create(outputPath_);
}

}  // namespace quillpress::driver
