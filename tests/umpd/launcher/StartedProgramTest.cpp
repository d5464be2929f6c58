// The library starts the real twsmsnd.exe from the folder of the driver.

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/launcher/support/InstalledLauncher.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {
namespace {

using Line = std::vector<std::wstring>;
using Lines = std::vector<Line>;

class StartedProgramTest : public DriverTest {
 protected:
  StartedProgramTest() { SettingsKey::ofPrinter(printer.name()).setText(L"DefaultSaveDir", folder.path()); }

  const TemporaryFolder folder;
  const InstalledLauncher launcher{library, folder.file(L"twsmsnd.log")};
  const Printer printer;
  Queue queue{library};
};

TEST_F(StartedProgramTest, TakesBothMessages) {
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(launcher.lines(1), (Lines{{L"startprint", printer.name()}}));
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(launcher.lines(2),
            (Lines{{L"startprint", printer.name()},
                   {L"stopprint", printer.name(), folder.file(L"Document.pdf"), L"Document"}}));
}

TEST_F(StartedProgramTest, IsStartedOnceForJobsInARow) {
  launcher.setOptions(L"--exit-after 4");
  int starts = 0;
  library.replace("CreateProcessW",
                  [&](LPCWSTR application, LPWSTR line, LPSECURITY_ATTRIBUTES process,
                      LPSECURITY_ATTRIBUTES thread, BOOL inherit, DWORD flags, LPVOID environment,
                      LPCWSTR where, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION information) -> BOOL {
                    ++starts;
                    return ::CreateProcessW(application, line, process, thread, inherit, flags, environment,
                                            where, startup, information);
                  });
  for (int round = 0; round < 3; ++round) {
    Job job(library, printer, L"Document" + std::to_wstring(round), 1);
    EXPECT_EQ(job.write("%!PS"), 1);
  }
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(launcher.lines(6).size(), 6U);
}

}  // namespace
}  // namespace quillpress::harness
