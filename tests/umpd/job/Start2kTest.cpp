// How a job begins by the handle of its printer.

#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

using Start2kTest = JobTest;

TEST_F(Start2kTest, GivesAJobForAnOpenPrinter) {
  EXPECT_NE(Job(library, printer).handle(), 0U);
}

TEST_F(Start2kTest, WithoutAHandleShowsABoxAndGivesNoJob) {
  std::wstring name = printer.name();
  std::wstring document = L"Document";
  EXPECT_EQ(driver.docStart2K(nullptr, 1, name.data(), document.data()), 0U);
  expectErrorBox(L"umpd - Could not retrieve printer info");
}

TEST_F(Start2kTest, OnAPrinterWithoutInformationShowsABoxAndGivesNoJob) {
  library.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 0;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  });
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  expectErrorBox(L"umpd - Could not retrieve printer info");
}

TEST_F(Start2kTest, OnAPrinterThatTellsNoNameShowsABoxAndGivesNoJob) {
  pretendPrinterName(library, "");
  EXPECT_EQ(Job(library, printer).handle(), 0U);
  expectErrorBox(L"umpd - Could not retrieve printer info");
}

TEST_F(Start2kTest, KnowsThePrinterByItsHandleAlone) {
  settings.setNumber(L"marker", 5);
  std::wstring otherName = L"Another printer";
  std::wstring document = L"Document";
  const JobHandle job = driver.docStart2K(printer.handle(), 1, otherName.data(), document.data());
  EXPECT_EQ(driver.getIntVal(job, L"marker", 0), 5);
  EXPECT_EQ(driver.docEnd(job), 1);
}

TEST_F(Start2kTest, OpensNoPrinter) {
  int openings = 0;
  library.replace("OpenPrinterW", [&](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
    ++openings;
    return ::OpenPrinterW(name, handle, defaults);
  });
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(openings, 0);
}

TEST_F(Start2kTest, TakesTheDocumentNameThatItIsGiven) {
  queue.add({.id = 1, .document = "of the queue", .position = 1});
  EXPECT_EQ(print(L"given"), 1);
  EXPECT_EQ(lastName(), L"given");
  EXPECT_EQ(lastFile(), folder.file(L"given.pdf"));
}

TEST_F(Start2kTest, EndsTheJobThatItIsGiven) {
  Job job(library, printer, L"Document", 77);
  job.write("x");
  job.end();
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].job, 77U);
  EXPECT_EQ(queue.controls()[0].printer, printer.handle());
}

TEST_F(Start2kTest, LeavesTheCallersHandleOpen) {
  EXPECT_EQ(print(L"Document"), 1);
  DWORD needed = 0;
  ::GetPrinterA(printer.handle(), 2, nullptr, 0, &needed);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

}  // namespace
}  // namespace quillpress::harness
