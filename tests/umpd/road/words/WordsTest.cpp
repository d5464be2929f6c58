// The road to its end: what a program prints becomes a PDF by quillpress.exe, which the launcher runs. The
// PDF stays beside this program, where other tools look for its words.

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/launcher/support/InstalledLauncher.h"
#include "tests/umpd/launcher/support/Process.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"
#include "tests/umpd/road/Drawing.h"

namespace quillpress::harness {
namespace {

// quillpress.exe in the folder of the driver, where the launcher finds it beside itself.
class InstalledConverter {
 public:
  InstalledConverter() : path_(folder_.path() + L"quillpress.exe") {
    const std::wstring delivered = folderOf(nullptr) + LR"(..\..\bin\quillpress.exe)";
    EXPECT_TRUE(CopyFileW(delivered.c_str(), path_.c_str(), FALSE)) << "error " << GetLastError();
  }
  ~InstalledConverter() { EXPECT_TRUE(DeleteFileW(path_.c_str())) << "error " << GetLastError(); }
  InstalledConverter(const InstalledConverter&) = delete;
  InstalledConverter& operator=(const InstalledConverter&) = delete;

 private:
  DriverFolder folder_;
  std::wstring path_;
};

TEST_F(DriverTest, WhatAProgramWritesBecomesAPdf) {
  const std::wstring kept = folderOf(nullptr) + L"printed words.pdf";
  DeleteFileW(kept.c_str());
  const TemporaryFolder folder;
  const Printer printer{{.name = L"", .port = folder.file(L"port")}};
  SettingsKey::ofPrinter(printer.name()).setText(L"DefaultSaveDir", folder.path());
  const InstalledConverter converter;
  const InstalledLauncher launcher{library, folder.file(L"twsmsnd.log")};
  launcher.setOptions(L"--until-stopprint --file-only");

  printWords(printer.name(), L"Words", folder.file(L"spooled"), L"Twelve quick quills", L"ink bold letters");
  Job job(library, printer, L"Program - Words", printer.beginDocument(L"Program - Words"));
  EXPECT_EQ(job.write(readFile(folder.file(L"spooled"))), 1);
  EXPECT_EQ(job.end(), 1);

  const std::vector<std::vector<std::wstring>> lines = launcher.lines(3);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[2], (std::vector<std::wstring>{L"converted", folder.file(L"Words.pdf"), L"0"}));
  EXPECT_TRUE(CopyFileW(folder.file(L"Words.pdf").c_str(), kept.c_str(), FALSE));
}

}  // namespace
}  // namespace quillpress::harness
