#include <gtest/gtest-spi.h>
#include <quillpress/converter.h>

#include <array>
#include <cstring>

#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/FreshProcess.h"
#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/harness/Text.h"
#include "tests/umpd/harness/Watchdog.h"

namespace quillpress::harness {
namespace {

class HarnessTest : public DriverTest {
 protected:
  // Has the library call OutputDebugStringA.
  void printFromAJob(const char* text) {
    const std::array<float, 6> matrix{1, 0, 0, 1, 0, 0};
    void* converter = library.find<decltype(PSOpen)>("PSOpen")(matrix.data());
    const std::string job = std::string("(") + text + ") print ";
    int length = static_cast<int>(job.size());
    EXPECT_NE(library.find<decltype(PSConvertToPdf)>("PSConvertToPdf")(converter, job.data(), &length),
              nullptr);
    library.find<decltype(PSClose)>("PSClose")(converter);
  }
};

TEST_F(HarnessTest, RecordsWhatTheLibraryTellsADebugger) {
  printFromAJob("hi");
  EXPECT_EQ(debuggerOutput.takeJoined(), L"hi");
  EXPECT_TRUE(debuggerOutput.take().empty());
}

TEST_F(HarnessTest, AReplacementMayHoldStateAndIsReplacedByTheNextOne) {
  std::string first;
  std::string second;
  for (std::string* target : {&first, &second}) {
    library.replace("OutputDebugStringA", [target](LPCSTR text) { *target += text; });
    printFromAJob("x");
  }
  EXPECT_EQ(first, "x");
  EXPECT_EQ(second, "x");
}

TEST_F(HarnessTest, ARestoredFunctionIsNotReplacedAnyMore) {
  library.restore("OutputDebugStringA");
  printFromAJob("unseen");
  EXPECT_TRUE(debuggerOutput.take().empty());
}

TEST_F(HarnessTest, AFunctionThatIsNotImportedFailsTheTest) {
  ASSERT_FALSE(library.imports("NoSuchFunction"));
  EXPECT_NONFATAL_FAILURE(library.replace("NoSuchFunction", [](DWORD) -> BOOL { return TRUE; }),
                          "does not import NoSuchFunction");
}

TEST_F(HarnessTest, AnExportThatIsMissingFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(static_cast<void>(library.find<void()>("NoSuchExport")),
                          "does not export NoSuchExport");
}

TEST_F(HarnessTest, APrinterIsThereAsLongAsItsObject) {
  std::wstring name;
  {
    const Printer printer;
    name = printer.name();
    EXPECT_NE(printer.handle(), nullptr);
    SettingsKey::ofPrinter(name).setNumber(L"n", 1);
  }
  HANDLE handle = nullptr;
  EXPECT_FALSE(OpenPrinterW(name.data(), &handle, nullptr));
  EXPECT_FALSE(SettingsKey::ofPrinter(name).exists());
}

TEST_F(HarnessTest, APrinterHasTheDriverAndPortAskedFor) {
  const Printer printer({.name = L"", .port = L"\\\\server\\queue", .driver = L"Another Driver"});
  std::array<BYTE, 4096> buffer{};
  DWORD needed = 0;
  ASSERT_TRUE(GetPrinterW(printer.handle(), 2, buffer.data(), buffer.size(), &needed));
  const auto* information = reinterpret_cast<const PRINTER_INFO_2W*>(buffer.data());
  EXPECT_STREQ(information->pPortName, L"\\\\server\\queue");
  EXPECT_STREQ(information->pDriverName, L"Another Driver");
}

TEST_F(HarnessTest, ValuesOfAKeyAreReadAsTheyAreStored) {
  const SettingsKey key = SettingsKey::ofPrinter(L"harness\\test");
  key.removeTree();
  EXPECT_FALSE(key.exists());
  key.setNumber(L"number", 7);
  key.setText(L"text", L"seven");
  EXPECT_EQ(key.number(L"number"), 7U);
  EXPECT_EQ(key.text(L"number"), std::nullopt);
  EXPECT_EQ(key.text(L"text"), L"seven");
  EXPECT_EQ(key.number(L"text"), std::nullopt);
  EXPECT_EQ(key.bytes(L"text")->size(), 12U);
  EXPECT_EQ(key.names(), (std::vector<std::wstring>{L"number", L"text"}));
  EXPECT_TRUE(SettingsKey(HKEY_CURRENT_USER, L"Software\\Quillpress\\harness,test").exists());
  key.remove(L"text");
  EXPECT_EQ(key.type(L"text"), std::nullopt);
  key.removeTree();
  EXPECT_FALSE(key.exists());
}

TEST_F(HarnessTest, TheDriverFolderTakesAnIniFile) {
  std::wstring file;
  {
    const DriverFolder folder(kWindowsNt4);
    EXPECT_EQ(folder.path().substr(folder.path().size() - 3), L"\\2\\");
    folder.writeIni("[init]\noverrideUserSettings=5\n");
    file = folder.path() + L"twsconf.ini";
    EXPECT_EQ(GetPrivateProfileIntW(L"init", L"overrideUserSettings", 0, file.c_str()), 5U);
  }
  EXPECT_EQ(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(HarnessTest, AFreshProcessIsAnotherProcess) {
  // Two processes that know the event by name; the lambda runs in the other one alone.
  const HANDLE mark = CreateEventW(nullptr, TRUE, FALSE, L"quillpress harness mark");
  const bool isFirst = GetLastError() != ERROR_ALREADY_EXISTS;
  inFreshProcess([=] {
    EXPECT_FALSE(isFirst);
    SetEvent(mark);
  });
  EXPECT_EQ(WaitForSingleObject(mark, 0), WAIT_OBJECT_0);
  CloseHandle(mark);
}

TEST_F(HarnessTest, AFreshProcessThatFailsFailsTheTest) {
  if (GetEnvironmentVariableW(L"QUILLPRESS_FRESH_PROCESS", nullptr, 0) != 0) {
    FAIL() << "on purpose";
  } else {
    EXPECT_NONFATAL_FAILURE(inFreshProcess([] {}), "on purpose");
  }
}

TEST_F(HarnessTest, OpenHandlesAreCounted) {
  const unsigned long before = handleCount();
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  EXPECT_EQ(handleCount(), before + 1);
  CloseHandle(event);
  EXPECT_EQ(handleCount(), before);
}

TEST_F(HarnessTest, TheWatchdogLeavesTimeToSayWhatWentWrong) {
  Watchdog::allow(20);
  EXPECT_LE(Watchdog::remainingMilliseconds(), 15000U);
  EXPECT_GT(Watchdog::remainingMilliseconds(), 10000U);
}

TEST_F(HarnessTest, TheWatchdogEndsATestThatTakesTooLong) {
  if (GetEnvironmentVariableW(L"QUILLPRESS_FRESH_PROCESS", nullptr, 0) != 0) {
    Watchdog::allow(0);
    Sleep(INFINITE);
  } else {
    EXPECT_NONFATAL_FAILURE(inFreshProcess([] {}), "the watchdog ends HarnessTest.TheWatchdogEnds");
  }
}

TEST(LibraryTest, IsUnloadedAtItsEnd) {
  { const Library library; }
  EXPECT_EQ(GetModuleHandleW(L"quillpress.dll"), nullptr);
}

TEST(TextTest, GoesThroughTheAnsiCodePage) {
  EXPECT_EQ(widen("\xE9"), L"\u00E9");
  EXPECT_EQ(narrow(L"\u00E9"), "\xE9");
  EXPECT_EQ(withReplaced(L"\\\\a\\b", L'\\', L','), L",,a,b");
}

}  // namespace
}  // namespace quillpress::harness
