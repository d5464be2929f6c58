#pragma once

#include <optional>
#include <string>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/harness/Text.h"
#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/launcher/support/Handle.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {

// Jobs of a printer whose user waits for the end of a document by the event "FinishPrintEv": they need no
// launcher. Their files go into a folder of the test, named after the document.
class JobTest : public DriverTest {
 protected:
  JobTest();

  // Has the jobs that follow speak to a launcher instead.
  void useLauncher() const { settings.setNumber(L"FinishPrintEv", 0); }

  // The only box since the last call is the plain error box with this text.
  void expectErrorBox(const std::wstring& text);

  // A whole job of one block, under the id 1. Returns what the block gave.
  int print(const std::wstring& documentName, const std::string& block = "%!PS") const;

  // Where the last document went, and what its name was.
  [[nodiscard]] std::optional<std::wstring> lastFile() const { return settings.text(L"lastfile"); }
  [[nodiscard]] std::optional<std::wstring> lastName() const { return settings.text(L"DocName"); }

  const std::wstring user = ownUserName();
  const TemporaryFolder folder;
  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
  const Driver driver{library};
  Queue queue{library};
};

}  // namespace quillpress::harness
