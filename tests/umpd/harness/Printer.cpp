#include "harness/Printer.h"

#include <gtest/gtest.h>

#include "AddPrinter.h"
#include "harness/SettingsKey.h"

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

std::wstring Printer::newName() {
  static int count = 0;
  return L"Quill " + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count);
}

}  // namespace quillpress::harness
