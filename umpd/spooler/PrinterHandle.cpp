#include "umpd/spooler/PrinterHandle.h"

#include <algorithm>
#include <iterator>

#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {

template <std::size_t kSize>
void copyText(wchar_t (&field)[kSize], std::wstring_view text) {
  const std::wstring_view part = fitting(text, kSize);
  std::copy(part.begin(), part.end(), std::begin(field));
}

}  // namespace

DeviceMode fixedDeviceMode(std::wstring_view printerName) {
  DeviceMode result{};
  DEVMODEW& mode = result.mode;
  copyText(mode.dmDeviceName, lastComponent(printerName, L"\\"));
  // Of Windows NT 4.0, which every later one reads as well.
  mode.dmSpecVersion = 0x401;
  mode.dmDriverVersion = 0x400;
  mode.dmSize = sizeof(DEVMODEW);
  mode.dmDriverExtra = static_cast<WORD>(result.driverExtra.size());
  mode.dmFields = DM_ORIENTATION | DM_PAPERSIZE | DM_SCALE | DM_COPIES | DM_DEFAULTSOURCE | DM_PRINTQUALITY |
                  DM_COLOR | DM_TTOPTION | DM_FORMNAME;
  mode.dmOrientation = DMORIENT_PORTRAIT;
  // Kept: the number says letter and the name A4, and printers have been set up with both
  // (DeviceModeTest.HasItsFields).
  mode.dmPaperSize = DMPAPER_LETTER;
  copyText(mode.dmFormName, L"A4");
  mode.dmScale = 100;
  mode.dmCopies = 1;
  mode.dmDefaultSource = DMBIN_FORMSOURCE;  // the driver chooses the tray by the form
  mode.dmPrintQuality = 300;
  mode.dmColor = DMCOLOR_COLOR;
  mode.dmDuplex = DMDUP_SIMPLEX;  // not among the fields above, where it is the default anyway
  mode.dmTTOption = DMTT_SUBDEV;
  return result;
}

PrinterHandle openPrinter(const std::wstring& printerName, DWORD access) {
  // OpenPrinterW takes its text without const, so it gets a copy of its own.
  std::wstring name = printerName;
  // The blocks are finished output: any other type would have the print processor change them.
  wchar_t dataType[] = L"RAW";
  DeviceMode mode = fixedDeviceMode(printerName);
  PRINTER_DEFAULTSW defaults{dataType, &mode.mode, access};
  PrinterHandle printer;
  if (OpenPrinterW(name.data(), printer.receive(), &defaults) == 0) {
    // Nobody says that a failed call leaves the handle alone.
    static_cast<void>(printer.release());
    QUILLPRESS_TRACE(L"OpenPrinter(%s) failed - %s\n", name, systemMessage(GetLastError()));
  }
  return printer;
}

}  // namespace quillpress::driver
