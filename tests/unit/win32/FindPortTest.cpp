#include <functional>

#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/Text.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/spooler/Printer.h"

namespace quillpress::driver {
namespace {

class Visitor final : public PrinterIteratorCallback {
 public:
  explicit Visitor(std::function<bool(const PRINTER_INFO_2A&)> body) : body_(std::move(body)) {}
  bool visit(const PRINTER_INFO_2A& record) override { return body_(record); }

 private:
  std::function<bool(const PRINTER_INFO_2A&)> body_;
};

// Printers come in the order of their names, and none of these ports is used elsewhere.
class FindPortTest : public classes::ClassTest {
 protected:
  const std::wstring base = classes::newObjectName();
  const std::wstring port = L"\\\\Server\\" + base;
  const std::wstring portWithCommas = L",,Server," + base;
  const harness::Printer otherDriver{{base + L" a", port, L"Another Driver"}};
  const harness::Printer otherPort{{base + L" b", L"FILE:"}};
  const harness::Printer sought{{base + L" c", port}};
  const harness::Printer second{{base + L" d", port}};
};

TEST_F(FindPortTest, EveryPrinterIsVisitedInOrder) {
  std::vector<std::wstring> names;
  Visitor visitor([&](const PRINTER_INFO_2A& record) {
    const std::wstring name = harness::widen(record.pPrinterName);
    if (name.starts_with(base)) names.push_back(name);
    return false;
  });
  EXPECT_FALSE(iteratePrinters(visitor));
  EXPECT_EQ(names,
            (std::vector<std::wstring>{otherDriver.name(), otherPort.name(), sought.name(), second.name()}));
}

TEST_F(FindPortTest, AVisitThatReturnsTrueIsTheLast) {
  std::wstring last;
  Visitor visitor([&](const PRINTER_INFO_2A& record) {
    last = harness::widen(record.pPrinterName);
    return last == otherPort.name();
  });
  EXPECT_TRUE(iteratePrinters(visitor));
  EXPECT_EQ(last, otherPort.name());
}

TEST_F(FindPortTest, LocalPrintersAndConnectionsAreAskedFor) {
  auto* const list = classes::real<decltype(EnumPrintersA)>(L"winspool.drv", "EnumPrintersA");
  imports.replace("EnumPrintersA",
                  [&](DWORD flags, LPSTR server, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed,
                      LPDWORD count) -> BOOL {
                    EXPECT_EQ(flags, 6U);
                    EXPECT_EQ(server, nullptr);
                    EXPECT_EQ(level, 2U);
                    return list(flags, server, level, buffer, size, needed, count);
                  });
  Visitor visitor([](const PRINTER_INFO_2A&) { return true; });
  EXPECT_TRUE(iteratePrinters(visitor));
}

TEST_F(FindPortTest, WithoutPrintersNothingIsVisited) {
  imports.replace("EnumPrintersA",
                  [](DWORD, LPSTR, DWORD, LPBYTE, DWORD, LPDWORD needed, LPDWORD count) -> BOOL {
                    *needed = 0;
                    *count = 0;
                    return TRUE;
                  });
  Visitor visitor([](const PRINTER_INFO_2A&) { return true; });
  EXPECT_FALSE(iteratePrinters(visitor));
  EXPECT_EQ(findPrinterOnPort(port), std::nullopt);
}

TEST_F(FindPortTest, ARefusedListIsNotVisited) {
  imports.replace("EnumPrintersA",
                  [](DWORD, LPSTR, DWORD, LPBYTE, DWORD, LPDWORD needed, LPDWORD count) -> BOOL {
                    *needed = 1000;
                    *count = 1;
                    return FALSE;
                  });
  Visitor visitor([](const PRINTER_INFO_2A&) { return true; });
  EXPECT_FALSE(iteratePrinters(visitor));
}

TEST_F(FindPortTest, FindsTheFirstPrinterOfTheProductOnThePort) {
  EXPECT_EQ(findPrinterOnPort(port), sought.name());
}

TEST_F(FindPortTest, CommasMayStandForBackslashes) {
  EXPECT_EQ(findPrinterOnPort(portWithCommas), sought.name());
}

TEST_F(FindPortTest, CaseDoesNotMatter) {
  EXPECT_EQ(findPrinterOnPort(L"\\\\SERVER\\" + base), sought.name());
  EXPECT_EQ(findPrinterOnPort(L",,sERVER," + base), sought.name());
}

TEST_F(FindPortTest, OtherPortsAreNotFound) {
  EXPECT_EQ(findPrinterOnPort(port + L"2"), std::nullopt);
  EXPECT_EQ(findPrinterOnPort(L""), std::nullopt);
}

TEST_F(FindPortTest, OneRecordIsLookedAtByItself) {
  char name[] = "A name";
  char driver[] = "TARNWICK quillpress";
  char portName[] = "\\\\s\\q";
  PRINTER_INFO_2A record{};
  record.pPrinterName = name;
  record.pDriverName = driver;
  record.pPortName = portName;
  FindPort callback(L",,s,q");
  EXPECT_EQ(callback.printerName(), L"");
  EXPECT_TRUE(callback.visit(record));
  EXPECT_EQ(callback.printerName(), L"A name");
}

TEST_F(FindPortTest, AnEmptyRecordIsSkipped) {
  FindPort callback(L"");
  EXPECT_FALSE(callback.visit({}));
  EXPECT_EQ(callback.printerName(), L"");
}

TEST_F(FindPortTest, ALongNameIsCutTo259Characters) {
  for (const std::size_t length : {259U, 260U, 400U}) {
    std::string name(length, 'n');
    char driver[] = "Tarnwick Quillpress";
    char portName[] = "p";
    PRINTER_INFO_2A record{};
    record.pPrinterName = name.data();
    record.pDriverName = driver;
    record.pPortName = portName;
    FindPort callback(L"p");
    EXPECT_TRUE(callback.visit(record));
    EXPECT_EQ(callback.printerName(), std::wstring(259, L'n'));
  }
}

}  // namespace
}  // namespace quillpress::driver
