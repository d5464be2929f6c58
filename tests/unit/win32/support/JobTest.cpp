#include "tests/unit/win32/support/JobTest.h"

namespace quillpress::classes {

JobTest::JobTest() {
  settings.setNumber(L"FinishPrintEv", 1);
  settings.setNumber(L"SaveFilenameAction", 1);
  settings.setText(L"DefaultSaveDir", folder.path());
  settings.setText(L"DefaultSaveFilename", L"out.pdf");
  imports.replace("SetJobW", [this](HANDLE, DWORD jobId, DWORD, LPBYTE, DWORD command) -> BOOL {
    controls.push_back({jobId, command});
    return TRUE;
  });
}

// Wine would write what was spooled to a file named after the port.
JobTest::~JobTest() {
  AbortPrinter(printer.handle());
}

}  // namespace quillpress::classes
