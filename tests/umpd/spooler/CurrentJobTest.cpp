// Which job of the queue a driver that knows only the printer's name takes for its own.

#include <algorithm>
#include <vector>

#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

class CurrentJobTest : public SpoolerTest {
 protected:
  // The document and the id of the job that a driver with only a name takes.
  struct Taken {
    std::wstring document;
    DWORD id;
    bool operator==(const Taken&) const = default;
  };
  friend std::ostream& operator<<(std::ostream& out, const Taken& taken) {
    return out << ::testing::PrintToString(taken.document) << " id " << taken.id;
  }

  Taken take() {
    const std::size_t before = queue.controls().size();
    Job job(library, printer.name());
    finish(job);
    if (queue.controls().size() == before + 1) return {lastDocument(), queue.controls().back().job};
    ADD_FAILURE() << queue.controls().size() - before << " jobs removed instead of one";
    return {};
  }

  static constexpr DWORD kNone = 0;
  Queue queue{library};
};

TEST_F(CurrentJobTest, IsTheOnlyOne) {
  queue.add({.id = 7, .document = "Only", .status = 0, .position = 1});
  EXPECT_EQ(take(), (Taken{L"Only", 7}));
}

TEST_F(CurrentJobTest, HasTheGreatestPosition) {
  queue.add({.id = 1, .document = "Low", .status = 0, .position = 1});
  queue.add({.id = 2, .document = "High", .status = 0, .position = 30});
  queue.add({.id = 3, .document = "Middle", .status = 0, .position = 2});
  EXPECT_EQ(take(), (Taken{L"High", 2}));
}

TEST_F(CurrentJobTest, IsTheFirstOfThoseAtOnePosition) {
  queue.add({.id = 1, .document = "Low", .status = 0, .position = 1});
  queue.add({.id = 2, .document = "First", .status = 0, .position = 5});
  queue.add({.id = 3, .document = "Second", .status = 0, .position = 5});
  EXPECT_EQ(take(), (Taken{L"First", 2}));
}

TEST_F(CurrentJobTest, MayBeAtPositionZero) {
  queue.add({.id = 4, .document = "First", .status = 0, .position = 0});
  queue.add({.id = 5, .document = "Second", .status = 0, .position = 0});
  EXPECT_EQ(take(), (Taken{L"First", 4}));
}

TEST_F(CurrentJobTest, OfAnEmptyQueueIsNone) {
  EXPECT_EQ(take(), (Taken{L"", kNone}));
  EXPECT_TRUE(queue.listings().empty());
}

TEST_F(CurrentJobTest, WithoutADocumentKeepsItsId) {
  queue.add({.id = 8, .document = std::nullopt, .status = 0, .position = 3});
  EXPECT_EQ(take(), (Taken{L"", 8}));
}

TEST_F(CurrentJobTest, HasADocumentInTheAnsiCodePage) {
  queue.add({.id = 8, .document = "5 \x80 f\xFCr", .status = 0, .position = 1});
  EXPECT_EQ(
      Job(library, printer.name()).text(L"pdfaXML").find(L"5 \u20AC f\u00FCr</rdf:li>") != std::wstring::npos,
      true);
}

TEST_F(CurrentJobTest, HasADocumentOfAtMost259Characters) {
  queue.add({.id = 8, .document = std::string(400, 'd'), .status = 0, .position = 1});
  EXPECT_EQ(take().document, std::wstring(259, L'd'));
}

TEST_F(CurrentJobTest, EntriesThatTheSpoolerDoesNotListCountAtPositionZero) {
  queue.add({.id = 1, .document = "Low", .status = 0, .position = 1});
  queue.add({.id = 2, .document = "High", .status = 0, .position = 2});
  queue.report(9);
  EXPECT_EQ(take(), (Taken{L"High", 2}));
}

TEST_F(CurrentJobTest, AListedJobAtPositionZeroComesBeforeEmptyEntries) {
  queue.add({.id = 6, .document = "Listed", .status = 0, .position = 0});
  queue.report(3);
  EXPECT_EQ(take(), (Taken{L"Listed", 6}));
}

TEST_F(CurrentJobTest, AListWithNothingButEmptyEntriesGivesNone) {
  queue.report(3);
  EXPECT_EQ(take(), (Taken{L"", kNone}));
}

TEST_F(CurrentJobTest, JobsBeyondThePrintersCountDoNotCount) {
  queue.add({.id = 1, .document = "First", .status = 0, .position = 1});
  queue.add({.id = 2, .document = "Second", .status = 0, .position = 2});
  queue.add({.id = 3, .document = "Beyond", .status = 0, .position = 3});
  queue.report(2);
  EXPECT_EQ(take(), (Taken{L"Second", 2}));
}

TEST_F(CurrentJobTest, AsksForOneJobMoreThanThePrinterCounts) {
  queue.add({.id = 1, .document = "First", .status = 0, .position = 1});
  queue.add({.id = 2, .document = "Second", .status = 0, .position = 2});
  HANDLE opened = nullptr;
  library.replace("OpenPrinterW", [&](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
    const BOOL done = ::OpenPrinterW(name, handle, defaults);
    opened = *handle;
    return done;
  });
  const Job job(library, printer.name());
  ASSERT_EQ(queue.listings().size(), 2U);
  for (const Queue::Listing& listing : queue.listings()) {
    EXPECT_EQ(listing.printer, opened);
    EXPECT_EQ(listing.first, 0U);
    EXPECT_EQ(listing.count, 3U);
    EXPECT_EQ(listing.level, 2U);
  }
  EXPECT_EQ(queue.listings()[0].size, 0U);
  EXPECT_EQ(queue.listings()[1].size, 2 * sizeof(JOB_INFO_2A) + sizeof("First") + sizeof("Second"));
}

TEST_F(CurrentJobTest, TheListIsReadIntoAZeroedBuffer) {
  queue.report(2);
  bool asked = false;
  library.replace(
      "EnumJobsA",
      [&](HANDLE, DWORD, DWORD, DWORD, LPBYTE buffer, DWORD size, LPDWORD needed, LPDWORD returned) -> BOOL {
        *needed = 3 * sizeof(JOB_INFO_2A);
        *returned = 0;
        if (size < *needed) {
          SetLastError(ERROR_INSUFFICIENT_BUFFER);
          return FALSE;
        }
        asked = true;
        EXPECT_TRUE(std::all_of(buffer, buffer + size, [](BYTE byte) { return byte == 0; }));
        return TRUE;
      });
  EXPECT_EQ(take(), (Taken{L"", kNone}));
  EXPECT_TRUE(asked);
}

TEST_F(CurrentJobTest, ASizeQuestionThatFailsOtherwiseGivesNone) {
  queue.add({.id = 7, .document = "Only", .status = 0, .position = 1});
  queue.failSizeQuery(ERROR_ACCESS_DENIED);
  EXPECT_EQ(take(), (Taken{L"", kNone}));
}

TEST_F(CurrentJobTest, AListingThatFailsGivesNone) {
  queue.add({.id = 7, .document = "Only", .status = 0, .position = 1});
  queue.failListing(ERROR_ACCESS_DENIED);
  EXPECT_EQ(take(), (Taken{L"", kNone}));
}

TEST_F(CurrentJobTest, ASizeBeyondAllMemoryGivesNone) {
  queue.report(1);
  library.replace("EnumJobsA",
                  [](HANDLE, DWORD, DWORD, DWORD, LPBYTE, DWORD, LPDWORD needed, LPDWORD returned) -> BOOL {
                    *needed = 0xFFFF0000;
                    *returned = 0;
                    SetLastError(ERROR_INSUFFICIENT_BUFFER);
                    return FALSE;
                  });
  EXPECT_EQ(take(), (Taken{L"", kNone}));
}

TEST_F(CurrentJobTest, ADriverThatTellsTheDocumentDoesNotLookForIt) {
  queue.add({.id = 7, .document = "Queued", .status = 0, .position = 1});
  const Job job(library, printer, L"Told", 7);
  EXPECT_TRUE(queue.listings().empty());
}

TEST_F(CurrentJobTest, ADriverThatTellsTheDocumentIsBelieved) {
  queue.add({.id = 7, .document = "Queued", .status = 0, .position = 1});
  queue.add({.id = 8, .document = "Later", .status = 0, .position = 2});
  library.replace("GetJobW", [](HANDLE, DWORD, DWORD, LPBYTE, DWORD, LPDWORD) -> BOOL {
    ADD_FAILURE() << "the job's record is not needed";
    return FALSE;
  });
  Job job(library, printer, L"Told", 7);
  finish(job);
  EXPECT_EQ(lastDocument(), L"Told");
  ASSERT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(queue.controls()[0].job, 7U);
}

TEST_F(CurrentJobTest, ADriverThatTellsNoDocumentHasNone) {
  queue.add({.id = 7, .document = "Queued", .status = 0, .position = 1});
  Job job(library, printer, L"", 7);
  finish(job);
  EXPECT_EQ(lastDocument(), L"");
}

TEST_F(CurrentJobTest, IsNotLookedForWhenTheJobGoesBackToTheSpooler) {
  settings.setNumber(L"passthru", 1);
  queue.add({.id = 7, .document = "Queued", .status = 0, .position = 1});
  const Job job(library, printer.name());
  EXPECT_TRUE(queue.listings().empty());
}

}  // namespace
}  // namespace quillpress::harness
