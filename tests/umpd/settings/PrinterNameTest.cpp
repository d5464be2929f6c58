// Which printer's settings a job has: names, ports and the default name.

#include <string>

#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kDefaultName[] = L"Tarnwick Quillpress";
constexpr wchar_t kPort[] = L"\\\\server\\queue";
constexpr wchar_t kPortWithCommas[] = L",,server,queue";

class PrinterNameTest : public SettingsTest {
 protected:
  ~PrinterNameTest() override { SettingsKey::ofPrinter(kPort).removeTree(); }

  // The job's own settings carry the mark of the printer that it found.
  static void mark(const Printer& each) { SettingsKey::ofPrinter(each.name()).setText(L"mark", each.name()); }

  std::wstring markOfJob(const std::wstring& name) {
    const Job job(library, name);
    return job.handle() == 0 ? L"(no job)" : job.text(L"mark");
  }
};

TEST_F(PrinterNameTest, AnOrdinaryNameIsTheKey) {
  mark(printer);
  EXPECT_EQ(markOfJob(printer.name()), printer.name());
}

TEST_F(PrinterNameTest, TheKeyLiesBelowTheProductsKeyOfTheUser) {
  const Job job(library, printer);
  EXPECT_TRUE(SettingsKey(HKEY_CURRENT_USER, L"Software\\Quillpress\\" + printer.name()).exists());
}

TEST_F(PrinterNameTest, AnEmptyNameIsTheOneThatTheGlobalKeyHolds) {
  mark(printer);
  SettingsKey::global().setText(L"printerName", printer.name());
  EXPECT_EQ(markOfJob(L""), printer.name());
}

TEST_F(PrinterNameTest, AnEmptyNameIsTheProductsWhenTheGlobalKeyHoldsNone) {
  const Printer named({.name = kDefaultName});
  mark(named);
  EXPECT_EQ(markOfJob(L""), kDefaultName);
}

TEST_F(PrinterNameTest, AnEmptyNameIsTheProductsWhenTheGlobalKeyHoldsAnEmptyOne) {
  const Printer named({.name = kDefaultName});
  mark(named);
  SettingsKey::global().setText(L"printerName", L"");
  EXPECT_EQ(markOfJob(L""), kDefaultName);
}

TEST_F(PrinterNameTest, AnEmptyNameIsTheProductsWhenTheGlobalKeyHoldsANumber) {
  const Printer named({.name = kDefaultName});
  mark(named);
  SettingsKey::global().setNumber(L"printerName", 5);
  EXPECT_EQ(markOfJob(L""), kDefaultName);
}

TEST_F(PrinterNameTest, APortIsResolvedToThePrinterOnIt) {
  const Printer onPort({.port = kPort});
  mark(onPort);
  mark(printer);
  EXPECT_EQ(markOfJob(kPort), onPort.name());
  EXPECT_EQ(markOfJob(kPortWithCommas), onPort.name());
  EXPECT_EQ(markOfJob(L"\\\\SERVER\\Queue"), onPort.name());
}

TEST_F(PrinterNameTest, AResolvedPortLeavesNoKeyOfItsOwn) {
  const Printer onPort({.port = kPort});
  EXPECT_EQ(markOfJob(kPort), L"");
  EXPECT_TRUE(SettingsKey::ofPrinter(onPort.name()).exists());
  EXPECT_FALSE(SettingsKey::ofPrinter(kPort).exists());
}

TEST_F(PrinterNameTest, AResolvedPortsPrinterIsTheGlobalOne) {
  const Printer onPort({.port = kPort});
  EXPECT_NE(Job(library, std::wstring(kPort)).handle(), 0U);
  EXPECT_EQ(SettingsKey::global().text(L"printerName"), onPort.name());
}

TEST_F(PrinterNameTest, APortOfAnotherDriversPrinterIsNotResolved) {
  const Printer other({.port = kPort, .driver = L"Another Driver"});
  const Job job(library, std::wstring(kPort));
  EXPECT_EQ(job.handle(), 0U);
  EXPECT_EQ(boxes.takeOne().text, L"umpd - Could not open printer [\\\\server\\queue]");
}

TEST_F(PrinterNameTest, APortWithoutAPrinterIsKeptAndItsKeyHasCommas) {
  // The spooler of a network knows the printer by this name; Wine's opens another one for it.
  library.replace("OpenPrinterW", [this](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
    EXPECT_STREQ(name, kPort);
    return ::OpenPrinterW(std::wstring(printer.name()).data(), handle, defaults);
  });
  const SettingsKey keyWithCommas(HKEY_CURRENT_USER, L"Software\\Quillpress\\,,server,queue");
  keyWithCommas.setText(L"mark", L"the port's");
  EXPECT_EQ(markOfJob(kPort), L"the port's");
  EXPECT_EQ(keyWithCommas.text(L"mark"), L"the port's");
}

TEST_F(PrinterNameTest, AHandlesPrinterIsNamedByTheSpooler) {
  mark(printer);
  std::wstring otherName = L"Another name";
  std::wstring document = L"Document";
  const JobHandle job = driver.docStart2K(printer.handle(), 0, otherName.data(), document.data());
  std::wstring buffer(100, L'\0');
  driver.getStringVal(job, L"mark", buffer.data(), 100, L"");
  EXPECT_STREQ(buffer.c_str(), printer.name().c_str());
  driver.docEnd(job);
}

TEST_F(PrinterNameTest, AHandlesPrinterOnTheNetworkHasItsKeyWithCommas) {
  pretendPrinterName(library, "\\\\server\\queue");
  const SettingsKey keyWithCommas(HKEY_CURRENT_USER, L"Software\\Quillpress\\,,server,queue");
  keyWithCommas.setText(L"mark", L"the network printer's");
  EXPECT_EQ(Job(library, printer).text(L"mark"), L"the network printer's");
}

TEST_F(PrinterNameTest, AHandlesPrinterOnTheNetworkIsLookedForOnThePorts) {
  const Printer onPort({.port = kPort});
  mark(onPort);
  pretendPrinterName(library, "\\\\server\\queue");
  EXPECT_EQ(Job(library, printer).text(L"mark"), onPort.name());
}

TEST_F(PrinterNameTest, ABackslashInsideANameIsACommaInTheKey) {
  pretendPrinterName(library, "a\\b");
  const SettingsKey keyWithComma(HKEY_CURRENT_USER, L"Software\\Quillpress\\a,b");
  keyWithComma.setText(L"mark", L"a,b");
  EXPECT_EQ(Job(library, printer).text(L"mark"), L"a,b");
  keyWithComma.removeTree();
}

}  // namespace
}  // namespace quillpress::harness
