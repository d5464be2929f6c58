// The library starts the real twsmsnd.exe from the folder of the driver.

#include "harness/Driver.h"
#include "harness/DriverFolder.h"
#include "harness/DriverTest.h"
#include "harness/Printer.h"
#include "harness/Queue.h"
#include "harness/SettingsKey.h"
#include "launcher/support/LauncherLog.h"
#include "launcher/support/Process.h"
#include "launcher/support/TemporaryFolder.h"

namespace quillpress::harness {
namespace {

class StartedProgramTest : public DriverTest {
 protected:
  StartedProgramTest() {
    EXPECT_TRUE(CopyFileW((folderOf(library.module()) + L"twsmsnd.exe").c_str(), launcher.c_str(), FALSE));
    SettingsKey::ofPrinter(printer.name()).setText(L"DefaultSaveDir", folder.path());
    // It says which process it is by the log that it writes; and it leaves by itself.
    SetEnvironmentVariableW(L"TWSMSND_OPTIONS",
                            (L"--until-stopprint --exit-after 50 --log \"" + log + L"\"").c_str());
  }
  ~StartedProgramTest() override {
    SetEnvironmentVariableW(L"TWSMSND_OPTIONS", nullptr);
    // A program that runs cannot be deleted.
    for (int tries = 0; tries < 1000 && DeleteFileW(launcher.c_str()) == 0; ++tries) Sleep(10);
    EXPECT_FALSE(fileExists(launcher));
  }

  const DriverFolder driver;
  const std::wstring launcher = driver.path() + L"twsmsnd.exe";
  const TemporaryFolder folder;
  const std::wstring log = folder.file(L"twsmsnd.log");
  const Printer printer;
  Queue queue{library};
};

TEST_F(StartedProgramTest, TakesBothMessages) {
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(readLauncherLog(log), (std::vector<std::vector<std::wstring>>{{L"startprint", printer.name()}}));
  EXPECT_EQ(job.end(), 1);
  const std::vector<std::vector<std::wstring>> lines = readLauncherLog(log);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[1], (std::vector<std::wstring>{L"stopprint", printer.name(), folder.file(L"Document.pdf"),
                                                 L"Document"}));
}

TEST_F(StartedProgramTest, IsStartedOnceForJobsInARow) {
  SetEnvironmentVariableW(L"TWSMSND_OPTIONS", (L"--exit-after 4 --log \"" + log + L"\"").c_str());
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
  EXPECT_EQ(readLauncherLog(log).size(), 6U);
}

}  // namespace
}  // namespace quillpress::harness
