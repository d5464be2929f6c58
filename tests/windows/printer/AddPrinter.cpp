#include "tests/windows/printer/AddPrinter.h"

namespace quillpress::testing {
namespace {

bool addDriver(std::wstring name) {
  std::wstring file = L"wineps.drv";
  std::wstring dataType = L"RAW";
  DRIVER_INFO_3W driver{};
  driver.cVersion = 3;
  driver.pName = name.data();
  driver.pDriverPath = file.data();
  driver.pDataFile = file.data();
  driver.pConfigFile = file.data();
  driver.pDefaultDataType = dataType.data();
  return AddPrinterDriverW(nullptr, 3, reinterpret_cast<BYTE*>(&driver)) != 0 ||
         GetLastError() == ERROR_PRINTER_DRIVER_ALREADY_INSTALLED;
}

}  // namespace

HANDLE addPrinter(std::wstring name, std::wstring driver, std::wstring port) {
  if (!addDriver(driver)) return nullptr;
  std::wstring processor = L"winprint";
  std::wstring dataType = L"RAW";
  PRINTER_INFO_2W printer{};
  printer.pPrinterName = name.data();
  printer.pDriverName = driver.data();
  printer.pPortName = port.data();
  printer.pPrintProcessor = processor.data();
  printer.pDatatype = dataType.data();
  const HANDLE added = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
  if (added == nullptr) return nullptr;
  ClosePrinter(added);

  PRINTER_DEFAULTSW defaults{};
  defaults.DesiredAccess = PRINTER_ALL_ACCESS;
  HANDLE opened = nullptr;
  return OpenPrinterW(name.data(), &opened, &defaults) != 0 ? opened : nullptr;
}

}  // namespace quillpress::testing
