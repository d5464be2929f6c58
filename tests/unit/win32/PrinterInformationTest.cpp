#include "tests/umpd/harness/Printer.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/spooler/Printer.h"

namespace quillpress::driver {
namespace {

class PrinterInformationTest : public classes::ClassTest {
 protected:
  PrinterInformation information;
};

TEST_F(PrinterInformationTest, IsTheSpoolersRecord) {
  const harness::Printer printer({L"", L"\\\\server\\queue"});
  const PRINTER_INFO_2A* record = information.read(printer.handle());
  ASSERT_NE(record, nullptr);
  EXPECT_STREQ(record->pDriverName, "Tarnwick Quillpress");
  EXPECT_STREQ(record->pPortName, "\\\\server\\queue");
  EXPECT_EQ(record->cJobs, 0U);
}

TEST_F(PrinterInformationTest, TellsThePrintersName) {
  const harness::Printer printer;
  EXPECT_EQ(information.readName(printer.handle()), printer.name());
}

TEST_F(PrinterInformationTest, TheNameIsReadInTheAnsiCodePage) {
  const harness::Printer printer({L"Quill \x00C4\x00E4\x20AC " + classes::newObjectName()});
  EXPECT_EQ(information.readName(printer.handle()), printer.name());
}

TEST_F(PrinterInformationTest, IsReadAnewEachTime) {
  const harness::Printer first;
  const harness::Printer second;
  EXPECT_EQ(information.readName(first.handle()), first.name());
  EXPECT_EQ(information.readName(second.handle()), second.name());
  EXPECT_EQ(information.read(nullptr), nullptr);
  EXPECT_EQ(information.readName(first.handle()), first.name());
}

TEST_F(PrinterInformationTest, WithoutAPrinterTheSpoolerIsNotAsked) {
  imports.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD) -> BOOL {
    ADD_FAILURE();
    return FALSE;
  });
  EXPECT_EQ(information.read(nullptr), nullptr);
  EXPECT_EQ(information.readName(nullptr), L"");
}

TEST_F(PrinterInformationTest, AnInvalidPrinterHasNone) {
  EXPECT_EQ(information.read(reinterpret_cast<HANDLE>(0x1234)), nullptr);
  EXPECT_EQ(information.readName(reinterpret_cast<HANDLE>(0x1234)), L"");
}

TEST_F(PrinterInformationTest, TheSizeIsAskedFirst) {
  const harness::Printer printer;
  auto* const ask = classes::real<decltype(GetPrinterA)>(L"winspool.drv", "GetPrinterA");
  std::vector<DWORD> sizes;
  DWORD answer = 0;
  imports.replace("GetPrinterA",
                  [&](HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
                    EXPECT_EQ(level, 2U);
                    sizes.push_back(size);
                    const BOOL known = ask(handle, level, buffer, size, needed);
                    if (sizes.size() == 1) answer = *needed;
                    return known;
                  });
  EXPECT_NE(information.read(printer.handle()), nullptr);
  EXPECT_EQ(sizes, (std::vector<DWORD>{0, answer}));
}

TEST_F(PrinterInformationTest, ARefusalAfterTheSizeGivesNone) {
  const harness::Printer printer;
  imports.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 1000;
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  });
  EXPECT_EQ(information.read(printer.handle()), nullptr);
  EXPECT_EQ(information.readName(printer.handle()), L"");
}

TEST_F(PrinterInformationTest, ASizeOfZeroGivesNone) {
  const harness::Printer printer;
  imports.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 0;
    return TRUE;
  });
  EXPECT_EQ(information.read(printer.handle()), nullptr);
}

TEST_F(PrinterInformationTest, ARecordWithoutNameHasTheEmptyOne) {
  imports.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
    *needed = sizeof(PRINTER_INFO_2A);
    if (size < *needed) return FALSE;
    *reinterpret_cast<PRINTER_INFO_2A*>(buffer) = {};
    return TRUE;
  });
  EXPECT_EQ(information.readName(reinterpret_cast<HANDLE>(0x1234)), L"");
}

}  // namespace
}  // namespace quillpress::driver
