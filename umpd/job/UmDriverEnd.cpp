// What happens when a document ends.

#include "umpd/channel/LauncherProxy.h"
#include "umpd/job/UmDriver.h"
#include "umpd/rules/DocumentName.h"
#include "umpd/rules/Trace.h"
#include "umpd/spooler/JobQueue.h"
#include "umpd/win32/NamedEvent.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {
namespace {

void signalFinished() {
  NamedEvent finished(std::wstring(windowsVersion().sessionPrefix()) + L"FinishPrintEv");
  // Whoever wanted it may have gone.
  static_cast<void>(finished.set());
}

}  // namespace

bool UmDriver::endDoc() {
  trace(L"> UmDriver::endDoc() %x\n", this);
  const NamedMutex::Lock lock(jobMutex_);
  if (!lock) return false;
  trace(L"> UmDriver::inside mutex %x\n", this);
  if (doPrint_) settings_.setInt(L"DoPrint", 0);
  if (!passThrough_ && outFile_.isBegun()) {
    finishSpooledJob();
    handOver();
  }
  reset();
  setStateFlag(kEnded);
  trace(L"< UmDriver::endDoc() %x \n", this);
  return true;
}

void UmDriver::finishSpooledJob() {
  const bool isFileOurs = outFile_.isCreated();
  outFile_.close();
  if (windowsVersion().isNtFamily && !isJobStatusOk(queryPrinter_, jobId_) && isFileOurs) {
    DeleteFileW(outputPath_.c_str());
  }
  removeJob(queryPrinter_, jobId_);
}

void UmDriver::handOver() {
  const bool isFinishEventWanted = settings_.getInt(L"FinishPrintEv", 0) != 0;
  trace(L"> finishPrintEv = %d\n", isFinishEventWanted ? 1 : 0);
  const std::wstring name = decodeDocumentName(documentName_);
  if (isFinishEventWanted) {
    settings_.setString(L"DocName", name);
    settings_.setString(L"lastfile", outputPath_);
    trace(L"> UmDriver::endDoc() about to signal finished print\n");
    signalFinished();
    return;
  }
  LauncherProxy launcher;
  if (launcher.isReceiverReady())
    launcher.sendStopPrint(settings_.naming().effectiveName(), name, outputPath_);
}

}  // namespace quillpress::driver
