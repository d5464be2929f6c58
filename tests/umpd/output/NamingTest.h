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

// Where the output of jobs goes. They need no launcher: their user waits for the event "FinishPrintEv".
class NamingTest : public DriverTest {
 protected:
  NamingTest();
  ~NamingTest() override;

  // The path of a document's output file. The test fails unless there is one with what the job wrote.
  std::wstring place(const std::wstring& documentName);

  // The path alone, of a file that perhaps cannot be created.
  std::wstring choose(const std::wstring& documentName);

  // No path can be chosen: a box says so, and the block fails.
  void expectNoPath(const std::wstring& documentName);

  // With the document's name used whole, whatever dashes it has.
  void keepDashes() const { settings.setNumber(L"TrimNameChar", 0xFFFF); }

  void setAction(DWORD action) const { settings.setNumber(L"SaveFilenameAction", action); }
  void setFolder(const std::wstring& path) const { settings.setText(L"DefaultSaveDir", path); }
  void setDefaultName(const std::wstring& name) const { settings.setText(L"DefaultSaveFilename", name); }
  void setExtension(const std::wstring& extension) const { settings.setText(L"DefaultExtension", extension); }

  // In the folder of the test, which the settings name.
  [[nodiscard]] std::wstring inFolder(const std::wstring& name) const { return folder.file(name); }

  const std::wstring user = ownUserName();
  const TemporaryFolder folder;
  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
  Queue queue{library};

 private:
  int print(const std::wstring& documentName);

  std::wstring formerCurrentFolder_;
};

// Whether `path` is `before`, a decimal number, and `after`.
bool isNumbered(const std::wstring& path, const std::wstring& before, const std::wstring& after);

// Removes a folder and all that it holds.
void removeTree(const std::wstring& path);

}  // namespace quillpress::harness
