#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/harness/Text.h"

namespace quillpress::harness {

// A printer that nobody has printed on, and its settings.
class SettingsTest : public DriverTest {
 protected:
  SettingsTest() { SettingsKey::global().remove(L"printerName"); }
  ~SettingsTest() override { SettingsKey::global().remove(L"printerName"); }

  // A printer that is in use has its key already and gets no defaults.
  void usePrinter() const { key.setText(L"in use", L"yes"); }

  Driver driver{library};
  DriverFolder folder;
  Printer printer;
  SettingsKey key = SettingsKey::ofPrinter(printer.name());
};

}  // namespace quillpress::harness
