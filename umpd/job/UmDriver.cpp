#include "umpd/job/UmDriver.h"

#include "postscript/lib/pdf/PdfObjectList.h"
#include "umpd/channel/LauncherProxy.h"
#include "umpd/rules/DocumentName.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/spooler/Identity.h"
#include "umpd/spooler/JobQueue.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/Resources.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
// The field of the record that the launcher reads the name from, its final zero included.
constexpr std::size_t kDocumentNameSize = 260;

std::wstring jobMutexName() {
  // Of the machine, not of the session: the spooler's service and the users' programs write to the same
  // printers.
  return std::wstring(windowsVersion().machinePrefix()) + L"umdriver";
}

// Empties the converter's list of PDF objects, which is one for the process. Jobs may do this on several
// threads at once.
void clearConverterObjects() {
  static CriticalSection section;
  const CriticalSection::Lock lock(section);
  PdfObjectList::ofProcess().clear();
}

void signalFinished() {
  NamedEvent finished(std::wstring(windowsVersion().sessionPrefix()) + L"FinishPrintEv");
  // Whoever wanted it may have gone.
  static_cast<void>(finished.set());
}

// The name as an error box shows it.
std::string shown(const wchar_t* name) {
  return name == nullptr ? "(null)" : toAnsi(name);
}
}  // namespace

UmDriver::UmDriver() : jobMutex_(jobMutexName()) {
  // A failure is no reason to give up: every wait looks for the mutex by name again.
  jobMutex_.create();
  reset();
}

UmDriver::~UmDriver() {
  reset();
}

void UmDriver::reset() {
  signature_ = kSignature;
  jobPrinter_ = nullptr;
  jobId_ = 0;
  stateFlags_ = 0;
  output_.reset();
  userName_.clear();
  documentName_.clear();
  clearConverterObjects();
}

bool UmDriver::init(HANDLE printer, DWORD jobId, const wchar_t* printerName) {
  const NamedMutex::Lock lock(jobMutex_);
  if (!lock) return false;
  // The name of the last printer used stands in until a handle or a name says otherwise.
  settings_.resetPrinterName();
  setPrinter(printer, jobId);
  // Read on the caller's thread, which carries the identity of the client whose job this is.
  userName_ = quillpress::driver::userName();
  if (printer == nullptr && !openPrinterByName(printerName)) return false;

  const std::wstring spoolersName = readPrinterName();
  if (spoolersName.empty()) {
    // The box shows the handle as a number of 32 bits, once signed and once in hexadecimal.
    const auto handle = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(queryPrinter_));
    showErrorBox("umpd - Could not retrieve printer info - handle [%d](0x%x), [%s]", static_cast<int>(handle),
                 handle, shown(printerName).c_str());
    return false;
  }
  // A name that the caller gave stays, so that a connection keeps the settings made under its own name.
  if (printerName == nullptr) settings_.setPrinterName(spoolersName);
  loadSettings();

  const WindowsVersion version = windowsVersion();
  // The rendering side of NT 4.0 runs in the kernel, from where it cannot call the getters.
  if (version.isNt4()) writeConfigFileAsSpooler();
  if (version.is9x()) settings_.setInt(L"printerData4", 1);
  identifyDocument();
  stateFlags_ = kInitialised;
  return true;
}

bool UmDriver::openPrinterByName(const wchar_t* printerName) {
  if (printerName == nullptr) {
    showErrorBox("umpd - No printer handle or name");
    return false;
  }
  settings_.setPrinterName(printerName);
  if (!settings_.openPrinter()) {
    showErrorBox("umpd - Could not open printer [%s]", toAnsi(settings_.naming().effectiveName()).c_str());
    return false;
  }
  // Only for questions: the handle belongs to the settings, and no job was started on it.
  queryPrinter_ = settings_.printer();
  return true;
}

void UmDriver::setPrinter(HANDLE printer, DWORD jobId) {
  queryPrinter_ = printer;
  jobPrinter_ = printer;
  jobId_ = jobId;
}

void UmDriver::setDocumentName(std::wstring_view name) {
  documentName_ = fitting(name, kDocumentNameSize);
}

void UmDriver::loadSettings() {
  // The override goes through the registry, so it comes before the settings are read from there.
  settings_.applyIniOverride();
  settings_.load();
  passThrough_ = settings_.getInt(L"passthru", 0) != 0;
}

// The client may not write into the system folder.
void UmDriver::writeConfigFileAsSpooler() {
  const SpoolerIdentity identity;
  if (!settings_.writeDriverConfigFile())
    showSystemErrorBox(L"copyNameValuesToPrinterDriverConfigFile failed");
}

void UmDriver::identifyDocument() {
  if (passThrough_) {
    // The blocks go straight back to the spooler and need no document name.
    if (jobPrinter_ == nullptr) jobPrinter_ = queryPrinter_;
    return;
  }
  // With both the spooler can be asked for this very job; otherwise the newest one in the queue is taken for
  // it.
  if (jobPrinter_ != nullptr && jobId_ != 0) {
    setDocumentName(readDocumentName(jobPrinter_, jobId_).value_or(std::wstring()));
    return;
  }
  QUILLPRESS_TRACE(L">getCurrentPrintJobDocName %s printer %d\n", settings_.naming().printerName,
                   queryPrinter_);
  const QueuedJob job = currentPrintJob(queryPrinter_);
  setDocumentName(job.documentName);
  // The end of the job takes it out of the queue by this number.
  if (jobId_ == 0) jobId_ = job.id;
}

bool UmDriver::write(std::span<const std::byte> bytes) {
  const NamedMutex::Lock lock(jobMutex_);
  if (!lock) return false;
  // A job without any printer handle has nowhere to pass its blocks to, so they go to a file.
  if (passThrough_ && jobPrinter_ != nullptr) return writeToPrinter(bytes);
  // Not at the job's start: a job without a block must leave neither a file nor a window behind.
  if (!output_.isBegun() && !output_.begin(settings_, documentName_)) return false;
  return output_.write(bytes);
}

// Kept: the count alone decides, so a block without bytes succeeds whatever the spooler says
// (PassThroughTest.AnEmptyBlockSucceedsWhateverTheSpoolerSays).
bool UmDriver::writeToPrinter(std::span<const std::byte> bytes) {
  if (bytes.data() == nullptr && !bytes.empty()) return false;
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  // The spooler only reads, though its declaration does not say so.
  void* const data = const_cast<std::byte*>(bytes.data());
  WritePrinter(jobPrinter_, data, size, &written);
  return written == size;
}

bool UmDriver::endDoc() {
  QUILLPRESS_TRACE(L"> UmDriver::endDoc() %x\n", this);
  const NamedMutex::Lock lock(jobMutex_);
  if (!lock) return false;
  QUILLPRESS_TRACE(L"> UmDriver::inside mutex %x\n", this);
  if (!passThrough_ && output_.isBegun()) {
    // The file is closed before the launcher hears of it, which may move it or open it for writing at once.
    finishSpooledJob();
    handOver();
  }
  reset();
  // After the reset, which clears all flags: of a job that has ended this one alone is left.
  setStateFlag(kEnded);
  QUILLPRESS_TRACE(L"< UmDriver::endDoc() %x \n", this);
  return true;
}

// The front end has all of the job, so the spooled copy goes. What the queue holds up has no output: it may
// be printed again.
void UmDriver::finishSpooledJob() {
  // Asked before closing. Where the creation failed, a file of this path is somebody else's and stays.
  const bool isFileOurs = output_.isCreated();
  output_.close();
  // The job must still be in the queue when its status is asked, so it is removed last. The 9x family keeps
  // no such status.
  if (windowsVersion().isNtFamily && !isJobStatusOk(queryPrinter_, jobId_) && isFileOurs)
    DeleteFileW(output_.path().c_str());
  removeJob(queryPrinter_, jobId_);
}

void UmDriver::handOver() {
  const bool isFinishEventWanted = settings_.getInt(L"FinishPrintEv", 0) != 0;
  QUILLPRESS_TRACE(L"> finishPrintEv = %d\n", isFinishEventWanted);
  const std::wstring name = decodeDocumentName(documentName_);
  if (isFinishEventWanted) {
    // Stored before the event is set: who waits for it reads both at once.
    settings_.setString(L"DocName", name);
    settings_.setString(L"lastfile", output_.path());
    QUILLPRESS_TRACE(L"> UmDriver::endDoc() about to signal finished print\n");
    signalFinished();
    return;
  }
  LauncherProxy launcher;
  // A launcher that has gone is not started again: its window went with it, and the file is there.
  if (launcher.isReceiverReady())
    launcher.sendStopPrint(settings_.naming().effectiveName(), name, output_.path());
}

bool UmDriver2k::init(HANDLE printer, DWORD jobId, const wchar_t* documentName) {
  QUILLPRESS_TRACE(L"> UmDriver2k::init %x\n", this);
  const NamedMutex::Lock lock(jobMutex());
  if (!lock) return false;
  // This interface always passes the handle on, so nothing is opened by name; a null one fails at the
  // printer's name below.
  setPrinter(printer, jobId);
  const std::wstring printerName = readPrinterName();
  if (printerName.empty()) {
    showErrorBox("umpd - Could not retrieve printer info");
    return false;
  }
  settings().setPrinterName(printerName);
  setDocumentName(textOrEmpty(documentName));
  // Before the settings are read: the set-up program may write some of them.
  runSetupProgramIfNeeded(printerName, settings().user());
  loadSettings();
  setStateFlag(kInitialised);
  QUILLPRESS_TRACE(L"< UmDriver2k::init %x finishprintev = %d\n", this,
                   settings().getInt(L"FinishPrintEv", 0));
  return true;
}
}  // namespace quillpress::driver
