#include "support/JobTest.h"

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

DWORD JobTest::spool(std::wstring documentName) const {
  wchar_t dataType[] = L"RAW";
  DOC_INFO_1W document{documentName.data(), nullptr, dataType};
  const DWORD id = StartDocPrinterW(printer.handle(), 1, reinterpret_cast<BYTE*>(&document));
  EXPECT_NE(id, 0U) << "error " << GetLastError();
  return id;
}

}  // namespace quillpress::classes
