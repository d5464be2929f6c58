#include "umpd/spooler/OpenPrinter.h"

#include "umpd/spooler/DeviceMode.h"
#include "umpd/win32/SystemMessage.h"
#include "umpd/win32/Trace.h"

namespace quillpress {

PrinterHandle openPrinter(const std::wstring& printerName, DWORD access) {
  std::wstring name = printerName;
  wchar_t dataType[] = L"RAW";
  DeviceMode mode = fixedDeviceMode(printerName);
  PRINTER_DEFAULTSW defaults{dataType, &mode.mode, access};
  PrinterHandle printer;
  if (OpenPrinterW(name.data(), printer.receive(), &defaults) == 0) {
    // Nobody says that a failed call leaves the handle alone.
    static_cast<void>(printer.release());
    if (kIsTraceOn)
      trace(L"OpenPrinter(%s) failed - %s\n", name.c_str(), systemMessage(GetLastError()).c_str());
  }
  return printer;
}

}  // namespace quillpress
