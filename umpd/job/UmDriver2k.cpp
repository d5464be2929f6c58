#include "umpd/job/UmDriver2k.h"

#include "umpd/output/SetupProgram.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/ErrorBox.h"

namespace quillpress::driver {

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
