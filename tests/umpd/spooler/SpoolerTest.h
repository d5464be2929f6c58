#pragma once

#include <string>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {

// Jobs whose files go into a folder of the test, named after the document. They tell no launcher: what they
// printed is noted in the printer's settings.
class SpoolerTest : public DriverTest {
 protected:
  SpoolerTest() {
    settings.setText(L"DefaultSaveDir", folder.path());
    settings.setNumber(L"FinishPrintEv", 1);
  }

  // Writes a block and ends the job.
  static void finish(Job& job) {
    EXPECT_EQ(job.write("%!PS"), 1);
    EXPECT_EQ(job.end(), 1);
  }

  // The name of the document that ended last.
  [[nodiscard]] std::wstring lastDocument() const { return settings.text(L"DocName").value_or(L"none"); }

  void expectPlainBox(const std::wstring& text) {
    const Box box = boxes.takeOne();
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.caption, L"Error");
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
  }

  const TemporaryFolder folder;
  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
};

}  // namespace quillpress::harness
