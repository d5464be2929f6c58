#pragma once

#include <string>
#include <vector>

#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"
#include "tests/unit/win32/support/ClassTest.h"

namespace quillpress::classes {

// A printer whose jobs go to "out.pdf" in a folder of the test and end with the event "FinishPrintEv", so
// that no launcher is needed. The controls of spooled jobs are noted and not passed on.
class JobTest : public ClassTest {
 protected:
  struct Control {
    DWORD jobId;
    DWORD command;
    bool operator==(const Control&) const = default;
  };

  JobTest();
  ~JobTest() override;

  [[nodiscard]] std::wstring outputFile() const { return folder.file(L"out.pdf"); }

  const harness::TemporaryFolder folder;
  const harness::Printer printer{{L"", L"\\\\server\\queue"}};
  const harness::SettingsKey settings = harness::SettingsKey::ofPrinter(printer.name());
  std::vector<Control> controls;
};

}  // namespace quillpress::classes
