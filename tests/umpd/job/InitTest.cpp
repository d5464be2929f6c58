// The steps in which a job begins.

#include <array>
#include <string>
#include <vector>

#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

std::wstring configFile() {
  std::array<wchar_t, MAX_PATH> folder{};
  GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
  return folder.data() + std::wstring(L"\\twscfg.1");
}

class InitTest : public JobTest {
 protected:
  InitTest() { DeleteFileW(configFile().c_str()); }
  ~InitTest() override { DeleteFileW(configFile().c_str()); }

  // One step is noted once, however many calls it takes.
  void note(const std::string& step) {
    if (steps.empty() || steps.back() != step) steps.push_back(step);
  }

  void recordSteps();
  void recordSpooler();
  void recordSettings();

  std::vector<std::string> steps;
};

void InitTest::recordSteps() {
  recordSpooler();
  recordSettings();
  library.replace("WaitForSingleObject", [this](HANDLE handle, DWORD milliseconds) -> DWORD {
    note(milliseconds == INFINITE ? "take the mutex" : "wait for a while");
    return ::WaitForSingleObject(handle, milliseconds);
  });
  library.replace("ReleaseMutex", [this](HANDLE mutex) -> BOOL {
    note("release the mutex");
    return ::ReleaseMutex(mutex);
  });
  library.replace("GetUserNameW", [this](LPWSTR name, LPDWORD size) -> BOOL {
    note("user name");
    return ::GetUserNameW(name, size);
  });
  library.replace("CreateFileW",
                  [this](LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                         DWORD disposition, DWORD attributes, HANDLE model) {
                    note("create " + narrow(path));
                    return ::CreateFileW(path, access, sharing, security, disposition, attributes, model);
                  });
}

void InitTest::recordSpooler() {
  library.replace("OpenPrinterW", [this](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
    note("open the printer");
    return ::OpenPrinterW(name, handle, defaults);
  });
  library.replace("GetPrinterA",
                  [this](HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
                    note("printer information");
                    if (!::GetPrinterA(handle, level, buffer, size, needed)) return FALSE;
                    reinterpret_cast<PRINTER_INFO_2A*>(buffer)->cJobs = 1;
                    return TRUE;
                  });
  library.replace("EnumJobsA", [this](HANDLE, DWORD, DWORD, DWORD, LPBYTE, DWORD, LPDWORD, LPDWORD) -> BOOL {
    note("queue");
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  });
  byName.replace("RevertToPrinterSelf", [this]() -> HANDLE {
    note("revert");
    return reinterpret_cast<HANDLE>(0x51);
  });
  byName.replace("ImpersonatePrinterClient", [this](HANDLE token) -> BOOL {
    note(token == reinterpret_cast<HANDLE>(0x51) ? "impersonate" : "impersonate somebody else");
    return TRUE;
  });
}

void InitTest::recordSettings() {
  library.replace("GetPrivateProfileIntW", [this](LPCWSTR section, LPCWSTR name, INT value, LPCWSTR file) {
    note("ini override");
    return ::GetPrivateProfileIntW(section, name, value, file);
  });
  library.replace("RegEnumValueW",
                  [this](HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD, LPDWORD type,
                         LPBYTE data, LPDWORD size) -> LONG {
                    note("load the settings");
                    return ::RegEnumValueW(key, index, name, nameSize, nullptr, type, data, size);
                  });
  library.replace("RegQueryValueExW",
                  [this](HKEY key, LPCWSTR name, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) -> LONG {
                    note("read " + narrow(name));
                    return ::RegQueryValueExW(key, name, nullptr, type, data, size);
                  });
  library.replace("RegSetValueExW",
                  [this](HKEY key, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) -> LONG {
                    note("store " + narrow(name));
                    return ::RegSetValueExW(key, name, 0, type, data, size);
                  });
}

TEST_F(InitTest, ByNameGoesFromTheMutexToTheQueue) {
  const DriverFolder driverFolder;
  driverFolder.writeIni("[init]\noverrideUserSettings=0\n");
  recordSteps();
  const Job job(library, printer.name());
  EXPECT_EQ(steps,
            (std::vector<std::string>{"take the mutex", "read printerName", "user name", "open the printer",
                                      "printer information", "ini override", "load the settings",
                                      "printer information", "queue", "release the mutex"}));
}

TEST_F(InitTest, ByNameOnNt4WritesTheConfigurationFileAsTheSpooler) {
  const DriverFolder driverFolder(kWindowsNt4);
  pretend(library, kWindowsNt4);
  recordSteps();
  const Job job(library, printer.name());
  EXPECT_EQ(steps,
            (std::vector<std::string>{"take the mutex", "read printerName", "user name", "open the printer",
                                      "printer information", "ini override", "load the settings", "revert",
                                      "create " + narrow(configFile()), "impersonate", "printer information",
                                      "queue", "release the mutex"}));
}

TEST_F(InitTest, ByNameOnWindows98StoresASettingForTheRenderingSide) {
  const DriverFolder driverFolder(kWindows98);
  pretend(library, kWindows98);
  recordSteps();
  const Job job(library, printer.name());
  EXPECT_EQ(steps, (std::vector<std::string>{"take the mutex", "read printerName", "user name",
                                             "open the printer", "printer information", "ini override",
                                             "load the settings", "store printerData4", "printer information",
                                             "queue", "release the mutex"}));
}

TEST_F(InitTest, ByHandleGoesFromTheMutexToTheSettings) {
  const DriverFolder driverFolder;
  recordSteps();
  const Job job(library, printer);
  EXPECT_EQ(steps, (std::vector<std::string>{"take the mutex", "printer information", "read twsmsnd.exe",
                                             "ini override", "load the settings", "release the mutex"}));
}

TEST_F(InitTest, AppliesTheOverrideBeforeItLoads) {
  const DriverFolder driverFolder;
  driverFolder.writeIni("[init]\noverrideUserSettings=1\nmarker=8\n");
  settings.setNumber(L"marker", 3);
  EXPECT_EQ(Job(library, printer.name()).number(L"marker"), 8);
  EXPECT_EQ(Job(library, printer).number(L"marker"), 8);
}

TEST_F(InitTest, OnNt4LeavesAConfigurationFile) {
  settings.setNumber(L"resolution", 600);
  pretend(library, kWindowsNt4);
  EXPECT_NE(Job(library, printer.name()).handle(), 0U);
  EXPECT_EQ(readFile(configFile()), std::string("r\0e\0s\0o\0l\0u\0t\0i\0o\0n\0=\0006\0000\0000\0&\0", 30));
}

TEST_F(InitTest, GoesOnWithoutAConfigurationFileAfterABox) {
  pretend(library, kWindowsNt4);
  FAIL_EVERY(library, CreateFileW, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
  EXPECT_NE(Job(library, printer.name()).handle(), 0U);
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, L"copyNameValuesToPrinterDriverConfigFile failed");
  EXPECT_TRUE(box.wide);
}

TEST_F(InitTest, GoesOnWithoutTheSpoolersLibraryAfterABox) {
  pretend(library, kWindowsNt4);
  byName.makeMissing(L"spoolss.dll");
  EXPECT_NE(Job(library, printer.name()).handle(), 0U);
  EXPECT_EQ(boxes.takeOne().caption, L"LoadLibrary spoolss.dll");
  EXPECT_TRUE(fileExists(configFile()));
}

TEST_F(InitTest, ByHandleLeavesNoConfigurationFile) {
  pretend(library, kWindowsNt4);
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_FALSE(fileExists(configFile()));
}

TEST_F(InitTest, ByHandleStoresNothingOnWindows98) {
  pretend(library, kWindows98);
  EXPECT_EQ(Job(library, printer).number(L"printerData4", 5), 5);
  EXPECT_EQ(settings.type(L"printerData4"), std::nullopt);
}

class InitReleaseTest : public InitTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  InitReleaseTest() { pretend(library, GetParam()); }
};

TEST_P(InitReleaseTest, HasAConfigurationFileOnNt4Alone) {
  EXPECT_NE(Job(library, printer.name()).handle(), 0U);
  EXPECT_EQ(fileExists(configFile()), GetParam().isNt4());
}

TEST_P(InitReleaseTest, StoresTheSettingForTheRenderingSideOnWindows98Alone) {
  const Job job(library, printer.name());
  const std::optional<DWORD> expected = GetParam().is9x() ? std::optional<DWORD>(1) : std::nullopt;
  EXPECT_EQ(settings.number(L"printerData4"), expected);
  EXPECT_EQ(job.number(L"printerData4", -1), GetParam().is9x() ? 1 : -1);
}

INSTANTIATE_TEST_SUITE_P(Releases, InitReleaseTest, ::testing::ValuesIn(kEveryWindows));

}  // namespace
}  // namespace quillpress::harness
