#include "harness/Printer.h"

#include <gtest/gtest.h>

#include "harness/SettingsKey.h"

namespace quillpress::harness {
namespace {

void addDriver(std::wstring name) {
  std::wstring wine = L"wineps.drv";
  std::wstring dataType = L"RAW";
  DRIVER_INFO_3W driver{};
  driver.cVersion = 3;
  driver.pName = name.data();
  driver.pDriverPath = wine.data();
  driver.pDataFile = wine.data();
  driver.pConfigFile = wine.data();
  driver.pDefaultDataType = dataType.data();
  if (AddPrinterDriverW(nullptr, 3, reinterpret_cast<BYTE*>(&driver))) return;
  const DWORD error = GetLastError();
  EXPECT_EQ(error, static_cast<DWORD>(ERROR_PRINTER_DRIVER_ALREADY_INSTALLED)) << "AddPrinterDriverW";
}

HANDLE addPrinter(std::wstring name, std::wstring driver, std::wstring port) {
  std::wstring processor = L"winprint";
  std::wstring dataType = L"RAW";
  PRINTER_INFO_2W printer{};
  printer.pPrinterName = name.data();
  printer.pDriverName = driver.data();
  printer.pPortName = port.data();
  printer.pPrintProcessor = processor.data();
  printer.pDatatype = dataType.data();
  const HANDLE handle = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
  EXPECT_NE(handle, nullptr) << "AddPrinterW: error " << GetLastError();
  return handle;
}

}  // namespace

Printer::Printer(const Options& options) : name_(options.name.empty() ? newName() : options.name) {
  addDriver(options.driver);
  const HANDLE added = addPrinter(name_, options.driver, options.port);
  if (added == nullptr) return;
  ClosePrinter(added);
  PRINTER_DEFAULTSW defaults{};
  defaults.DesiredAccess = PRINTER_ALL_ACCESS;
  EXPECT_TRUE(OpenPrinterW(name_.data(), &handle_, &defaults)) << "error " << GetLastError();
}

Printer::~Printer() {
  if (handle_ != nullptr) {
    EXPECT_TRUE(DeletePrinter(handle_));
    ClosePrinter(handle_);
  }
  SettingsKey::ofPrinter(name_).removeTree();
}

std::wstring Printer::newName() {
  static int count = 0;
  return L"Quill " + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count);
}

}  // namespace quillpress::harness
