#include "job/UmDriver2k.h"

#include "output/SetupProgram.h"
#include "win32/ErrorBox.h"
#include "win32/Text.h"
#include "win32/Trace.h"

namespace quillpress {

bool UmDriver2k::init(HANDLE printer, DWORD jobId, const wchar_t* documentName) {
  trace("> UmDriver2k::init %p\n", static_cast<void*>(this));
  const NamedMutex::Lock lock(jobMutex());
  if (!lock) return false;
  setPrinter(printer, jobId);
  const std::wstring printerName = readPrinterName();
  if (printerName.empty()) {
    showErrorBox("umpd - Could not retrieve printer info");
    return false;
  }
  settings().setPrinterName(printerName);
  setDocumentName(textOrEmpty(documentName));
  runSetupProgramIfNeeded(printerName);
  loadSettings();
  setStateFlag(kInitialised);
  trace("< UmDriver2k::init %p finishprintev = %d\n", static_cast<void*>(this),
        settings().getInt(L"FinishPrintEv", 0));
  return true;
}

}  // namespace quillpress
