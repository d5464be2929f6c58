// What becomes of the spooled job and of the file when a document ends.

#include <vector>

#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

class JobRemovalTest : public SpoolerTest {
 protected:
  // Prints the document as job 7.
  void print() {
    Job job(library, printer, L"Document", 7);
    finish(job);
  }

  [[nodiscard]] bool isFileKept() const { return fileExists(folder.file(L"Document.pdf")); }

  Queue queue{library};
};

class BadStatusTest : public JobRemovalTest, public ::testing::WithParamInterface<DWORD> {};

TEST_P(BadStatusTest, DeletesTheFile) {
  queue.add({.id = 7, .document = "Document", .status = GetParam(), .position = 1});
  print();
  EXPECT_FALSE(isFileKept());
}

TEST_P(BadStatusTest, RemovesTheJobAllTheSame) {
  queue.add({.id = 7, .document = "Document", .status = GetParam(), .position = 1});
  print();
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].job, 7U);
}

TEST_P(BadStatusTest, OnWindows9xKeepsTheFile) {
  pretend(library, kWindows98);
  queue.add({.id = 7, .document = "Document", .status = GetParam(), .position = 1});
  print();
  EXPECT_TRUE(isFileKept());
}

// Paused, error, offline, paper out, blocked; also together with others and while being deleted.
INSTANTIATE_TEST_SUITE_P(Statuses, BadStatusTest,
                         ::testing::Values(0x1, 0x2, 0x20, 0x40, 0x200, 0x263, 0x3, 0x240, 0x1 | 0x4,
                                           0x2 | 0x10, 0x200 | 0x80, 0xFFFFFFFF));

class GoodStatusTest : public JobRemovalTest, public ::testing::WithParamInterface<DWORD> {};

TEST_P(GoodStatusTest, KeepsTheFile) {
  queue.add({.id = 7, .document = "Document", .status = GetParam(), .position = 1});
  print();
  EXPECT_TRUE(isFileKept());
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].job, 7U);
}

// Every other bit: being deleted, spooling, printing, printed, deleted, user intervention and what may come.
INSTANTIATE_TEST_SUITE_P(Statuses, GoodStatusTest,
                         ::testing::Values(0x0, 0x4, 0x8, 0x10, 0x80, 0x100, 0x400, 0x800, 0x1000, 0x2000,
                                           0x4000, 0x8000, 0x10000, 0x80000000, 0x4 | 0x10,
                                           0xFFFFFFFF & ~0x263));

TEST_F(JobRemovalTest, TheStatusOfOtherJobsDoesNotCount) {
  queue.add({.id = 6, .document = "Other", .status = 0x2, .position = 1});
  queue.add({.id = 7, .document = "Document", .status = 0x10, .position = 2});
  queue.add({.id = 8, .document = "Another", .status = 0x1, .position = 3});
  print();
  EXPECT_TRUE(isFileKept());
}

TEST_F(JobRemovalTest, TheJobIsFoundAnywhereInTheQueue) {
  queue.add({.id = 6, .document = "Other", .status = 0x10, .position = 1});
  queue.add({.id = 5, .document = "Another", .status = 0x10, .position = 2});
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 3});
  print();
  EXPECT_FALSE(isFileKept());
}

TEST_F(JobRemovalTest, TheStatusIsThatOfTheEnd) {
  queue.add({.id = 7, .document = "Document", .status = 0x10, .position = 1});
  Job job(library, printer, L"Document", 7);
  EXPECT_EQ(job.write("%!PS"), 1);
  queue.clear();
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 1});
  EXPECT_EQ(job.end(), 1);
  EXPECT_FALSE(isFileKept());
}

TEST_F(JobRemovalTest, AJobThatIsNotQueuedIsFine) {
  queue.add({.id = 6, .document = "Other", .status = 0x263, .position = 1});
  print();
  EXPECT_TRUE(isFileKept());
}

TEST_F(JobRemovalTest, AnEmptyQueueIsFine) {
  print();
  EXPECT_TRUE(isFileKept());
}

TEST_F(JobRemovalTest, AQueueThatCannotBeReadIsFine) {
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 1});
  queue.failSizeQuery(ERROR_ACCESS_DENIED);
  print();
  EXPECT_TRUE(isFileKept());
}

TEST_F(JobRemovalTest, APrinterThatTellsNothingMoreIsFine) {
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 1});
  Job job(library, printer, L"Document", 7);
  EXPECT_EQ(job.write("%!PS"), 1);
  library.replace("GetPrinterA", [](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD) -> BOOL { return FALSE; });
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(isFileKept());
}

TEST_F(JobRemovalTest, ADeletedFileIsStillNamedInTheSettings) {
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 1});
  print();
  EXPECT_EQ(lastDocument(), L"Document");
  EXPECT_EQ(settings.text(L"lastfile"), folder.file(L"Document.pdf"));
}

TEST_F(JobRemovalTest, AnotherFileOfTheFolderStays) {
  writeFile(folder.file(L"Another.pdf"), "x");
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 1});
  print();
  EXPECT_EQ(folder.files(), std::vector<std::wstring>{L"Another.pdf"});
}

class RemovalByReleaseTest : public JobRemovalTest, public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(RemovalByReleaseTest, DeletesOnTheNtFamilyAndCancelsOnThe9xFamily) {
  pretend(library, GetParam());
  print();
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].printer, printer.handle());
  EXPECT_EQ(queue.controls()[0].job, 7U);
  EXPECT_EQ(queue.controls()[0].level, 0U);
  EXPECT_EQ(queue.controls()[0].command, GetParam().is9x() ? 3U : 5U);
}

TEST_P(RemovalByReleaseTest, LooksAtTheStatusOnTheNtFamilyOnly) {
  pretend(library, GetParam());
  queue.add({.id = 7, .document = "Document", .status = 0x10, .position = 1});
  print();
  EXPECT_EQ(queue.listings().empty(), GetParam().is9x());
}

INSTANTIATE_TEST_SUITE_P(Releases, RemovalByReleaseTest, ::testing::ValuesIn(kEveryWindows),
                         ::testing::PrintToStringParamName());

TEST_F(JobRemovalTest, UsesThePrinterThatWasOpenedByName) {
  std::vector<HANDLE> opened;
  library.replace("OpenPrinterW", [&](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
    const BOOL done = ::OpenPrinterW(name, handle, defaults);
    opened.push_back(*handle);
    return done;
  });
  queue.add({.id = 9, .document = "Document", .status = 0x10, .position = 1});
  Job job(library, printer.name());
  finish(job);
  ASSERT_EQ(opened.size(), 1U);
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].printer, opened[0]);
  for (const Queue::Listing& listing : queue.listings()) EXPECT_EQ(listing.printer, opened[0]);
}

TEST_F(JobRemovalTest, ARemovalThatFailsDoesNotMatter) {
  FAIL_EVERY(library, SetJobW, FALSE, ERROR_ACCESS_DENIED);
  print();
  EXPECT_TRUE(isFileKept());
}

TEST_F(JobRemovalTest, AJobWithoutAFileStays) {
  queue.add({.id = 7, .document = "Document", .status = 0x2, .position = 1});
  Job job(library, printer, L"Document", 7);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(queue.controls().empty());
  EXPECT_TRUE(queue.listings().empty());
}

}  // namespace
}  // namespace quillpress::harness
