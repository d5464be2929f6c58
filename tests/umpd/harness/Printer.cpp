#include "tests/umpd/harness/Printer.h"

#include <gtest/gtest.h>

#include "tests/umpd/harness/SettingsKey.h"
#include "tests/windows/printer/AddPrinter.h"

namespace quillpress::harness {
Printer::Printer(const Options& options)
    : name_(options.name.empty() ? newName() : options.name),
      handle_(quillpress::testing::addPrinter(name_, options.driver, options.port)) {
  EXPECT_NE(handle_, nullptr) << "the printer cannot be added: error " << GetLastError();
}

Printer::~Printer() {
  if (handle_ != nullptr) {
    EXPECT_TRUE(DeletePrinter(handle_));
    ClosePrinter(handle_);
  }
  SettingsKey::ofPrinter(name_).removeTree();
}

DWORD Printer::beginDocument(std::wstring documentName) const {
  wchar_t dataType[] = L"RAW";
  DOC_INFO_1W document{documentName.data(), nullptr, dataType};
  const DWORD job = StartDocPrinterW(handle_, 1, reinterpret_cast<BYTE*>(&document));
  EXPECT_NE(job, 0U) << "error " << GetLastError();
  return job;
}

std::wstring Printer::newName() {
  static int count = 0;
  return L"Quill " + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count);
}

}  // namespace quillpress::harness
