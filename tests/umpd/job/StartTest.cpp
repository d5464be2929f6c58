// How a job begins by the name of its printer.

#include <array>
#include <cstdio>
#include <vector>

#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

class StartTest : public JobTest {
 protected:
  // The names with which printers are opened from now on.
  void recordOpenings() {
    library.replace("OpenPrinterW",
                    [this](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
                      const BOOL isOpen = ::OpenPrinterW(name, handle, defaults);
                      opened.emplace_back(name);
                      access = defaults->DesiredAccess;
                      dataType = defaults->pDatatype;
                      openedHandle = isOpen ? *handle : nullptr;
                      return isOpen;
                    });
  }

  std::vector<std::wstring> opened;
  DWORD access = 0;
  std::wstring dataType;
  HANDLE openedHandle = nullptr;
};

TEST_F(StartTest, GivesAJobForAPrinter) {
  EXPECT_NE(Job(library, printer.name()).handle(), 0U);
}

TEST_F(StartTest, WithoutANameShowsABoxAndGivesNoJob) {
  EXPECT_EQ(driver.docStart(nullptr), 0U);
  expectErrorBox(L"DocStart - invalid printer name (null)\n");
}

TEST_F(StartTest, OfAPrinterThatIsNotThereShowsABoxAndGivesNoJob) {
  const std::wstring name = Printer::newName();
  EXPECT_EQ(Job(library, name).handle(), 0U);
  expectErrorBox(L"umpd - Could not open printer [" + name + L"]");
}

TEST_F(StartTest, OpensThePrinterForUseWithRawData) {
  recordOpenings();
  const Job job(library, printer.name());
  EXPECT_EQ(opened, std::vector<std::wstring>{printer.name()});
  EXPECT_EQ(access, 8U);
  EXPECT_EQ(dataType, L"RAW");
}

TEST_F(StartTest, ClosesThePrinterWithTheJob) {
  recordOpenings();
  std::vector<HANDLE> closed;
  library.replace("ClosePrinter", [&](HANDLE handle) -> BOOL {
    closed.push_back(handle);
    return ::ClosePrinter(handle);
  });
  {
    const Job job(library, printer.name());
    EXPECT_TRUE(closed.empty());
  }
  EXPECT_EQ(closed, std::vector<HANDLE>{openedHandle});
}

TEST_F(StartTest, OnAPrinterWithoutInformationShowsABoxAndGivesNoJob) {
  recordOpenings();
  library.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 0;
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  });
  EXPECT_EQ(Job(library, printer.name()).handle(), 0U);
  std::array<char, 200> text{};
  const auto handle = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(openedHandle));
  std::snprintf(text.data(), text.size(), "umpd - Could not retrieve printer info - handle [%d](0x%x), [%s]",
                static_cast<int>(handle), handle, narrow(printer.name()).c_str());
  expectErrorBox(widen(text.data()));
}

TEST_F(StartTest, OnAPrinterThatTellsNoNameShowsABoxAndGivesNoJob) {
  pretendPrinterName(library, "");
  EXPECT_EQ(Job(library, printer.name()).handle(), 0U);
  EXPECT_EQ(boxes.takeOne().text.find(L"umpd - Could not retrieve printer info - handle ["), 0U);
}

TEST_F(StartTest, TakesTheDocumentAtTheGreatestPositionOfTheQueue) {
  queue.add({.id = 4, .document = "first", .position = 1});
  queue.add({.id = 9, .document = "last", .position = 3});
  queue.add({.id = 6, .document = "middle", .position = 2});
  Job job(library, printer.name());
  EXPECT_EQ(job.write("x"), 1);
  job.end();
  EXPECT_EQ(lastName(), L"last");
  EXPECT_EQ(lastFile(), folder.file(L"last.pdf"));
}

TEST_F(StartTest, EndsTheJobThatItFoundInTheQueue) {
  recordOpenings();
  queue.add({.id = 9, .document = "one", .position = 1});
  Job job(library, printer.name());
  job.write("x");
  job.end();
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].job, 9U);
  EXPECT_EQ(queue.controls()[0].printer, openedHandle);
}

TEST_F(StartTest, WithAnEmptyQueueHasNoDocumentName) {
  settings.setText(L"DefaultSaveFilename", L"nameless");
  Job job(library, printer.name());
  EXPECT_EQ(job.write("x"), 1);
  job.end();
  EXPECT_EQ(lastName(), L"");
  EXPECT_EQ(lastFile(), folder.file(L"nameless.pdf"));
}

TEST_F(StartTest, CutsALongDocumentNameOfTheQueue) {
  queue.add({.id = 1, .document = std::string(300, 'n'), .position = 1});
  Job job(library, printer.name());
  job.write("x");
  job.end();
  EXPECT_EQ(lastName(), std::wstring(259, L'n'));
}

TEST_F(StartTest, ReadsTheQueueInTheAnsiCodePage) {
  queue.add({.id = 1, .document = "caf\xE9 \x80", .position = 1});
  Job job(library, printer.name());
  job.write("x");
  job.end();
  EXPECT_EQ(lastName(), L"caf\u00E9 \u20AC");
}

// Printers named by the port that they print to.
class PortStartTest : public StartTest {
 protected:
  PortStartTest() {
    settings.setNumber(L"marker", 1);
    SettingsKey::ofPrinter(onPort.name()).setNumber(L"marker", 2);
  }

  const std::wstring port = L"\\\\quill" + std::to_wstring(GetCurrentProcessId()) + L"\\queue";
  const Printer onPort{{.name = L"", .port = port}};
};

TEST_F(PortStartTest, FindsThePrinterOnAPort) {
  recordOpenings();
  EXPECT_EQ(Job(library, port).number(L"marker"), 2);
  EXPECT_EQ(opened, std::vector<std::wstring>{onPort.name()});
}

TEST_F(PortStartTest, FindsThePrinterOnAPortWrittenWithCommas) {
  recordOpenings();
  EXPECT_EQ(Job(library, withReplaced(port, L'\\', L',')).number(L"marker"), 2);
  EXPECT_EQ(opened, std::vector<std::wstring>{onPort.name()});
}

TEST_F(PortStartTest, KeepsANameThatIsNoPort) {
  recordOpenings();
  EXPECT_EQ(Job(library, L"\\\\quillnowhere\\queue").handle(), 0U);
  EXPECT_EQ(opened, std::vector<std::wstring>{L"\\\\quillnowhere\\queue"});
  expectErrorBox(L"umpd - Could not open printer [\\\\quillnowhere\\queue]");
}

TEST_F(PortStartTest, KeepsANameThatIsNoPortWrittenWithCommas) {
  EXPECT_EQ(Job(library, L",,quillnowhere,queue").handle(), 0U);
  expectErrorBox(L"umpd - Could not open printer [,,quillnowhere,queue]");
}

// What an empty name stands for.
class EmptyNameStartTest : public StartTest {
 protected:
  EmptyNameStartTest() { global.remove(L"printerName"); }
  ~EmptyNameStartTest() override { global.remove(L"printerName"); }

  const SettingsKey global = SettingsKey::global();
};

TEST_F(EmptyNameStartTest, IsTheUsersPrinter) {
  global.setText(L"printerName", printer.name());
  recordOpenings();
  EXPECT_NE(Job(library, L"").handle(), 0U);
  EXPECT_EQ(opened, std::vector<std::wstring>{printer.name()});
}

TEST_F(EmptyNameStartTest, IsTheProductsPrinterForANewUser) {
  EXPECT_EQ(Job(library, L"").handle(), 0U);
  expectErrorBox(L"umpd - Could not open printer [Tarnwick Quillpress]");
}

TEST_F(EmptyNameStartTest, IsTheProductsPrinterWhenTheUsersIsEmpty) {
  global.setText(L"printerName", L"");
  EXPECT_EQ(Job(library, L"").handle(), 0U);
  expectErrorBox(L"umpd - Could not open printer [Tarnwick Quillpress]");
}

}  // namespace
}  // namespace quillpress::harness
