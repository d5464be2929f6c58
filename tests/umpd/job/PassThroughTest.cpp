// Jobs whose bytes go back to the spooler.

#include <algorithm>
#include <string>
#include <vector>

#include "tests/umpd/job/JobTest.h"
#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Peer.h"

namespace quillpress::harness {
namespace {

class PassThroughTest : public JobTest {
 protected:
  PassThroughTest() { settings.setNumber(L"passthru", 1); }

  struct Block {
    HANDLE printer;
    std::string bytes;
  };

  // The spooler takes at most so many bytes of a block, and says whether it is content.
  void takeBlocks(DWORD most = 1000, BOOL result = TRUE) {
    library.replace("WritePrinter",
                    [=, this](HANDLE handle, LPVOID bytes, DWORD size, LPDWORD written) -> BOOL {
                      blocks.push_back({handle, std::string(static_cast<const char*>(bytes), size)});
                      *written = std::min(size, most);
                      return result;
                    });
  }

  std::vector<Block> blocks;
};

TEST_F(PassThroughTest, HandsEveryBlockToTheSpooler) {
  takeBlocks();
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("one"), 1);
  EXPECT_EQ(job.write(std::string("t\0wo", 4)), 1);
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].printer, printer.handle());
  EXPECT_EQ(blocks[0].bytes, "one");
  EXPECT_EQ(blocks[1].bytes, std::string("t\0wo", 4));
}

TEST_F(PassThroughTest, OfAJobByNameUsesThePrinterThatItOpened) {
  HANDLE opened = nullptr;
  library.replace("OpenPrinterW", [&](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
    const BOOL isOpen = ::OpenPrinterW(name, handle, defaults);
    opened = *handle;
    return isOpen;
  });
  takeBlocks();
  Job job(library, printer.name());
  EXPECT_EQ(job.write("one"), 1);
  ASSERT_EQ(blocks.size(), 1U);
  EXPECT_EQ(blocks[0].printer, opened);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(folder.files().empty());
}

TEST_F(PassThroughTest, OfAJobByNameDoesNotLookAtTheQueue) {
  queue.add({.id = 1, .document = "one", .position = 1});
  const Job job(library, printer.name());
  EXPECT_TRUE(queue.listings().empty());
}

TEST_F(PassThroughTest, AnyOtherNumberThanZeroMeansIt) {
  settings.setNumber(L"passthru", 7);
  takeBlocks();
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(blocks.size(), 1U);
}

TEST_F(PassThroughTest, ZeroDoesNotMeanIt) {
  settings.setNumber(L"passthru", 0);
  takeBlocks();
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(blocks.empty());
  EXPECT_EQ(folder.files(), std::vector<std::wstring>{L"Document.pdf"});
}

TEST_F(PassThroughTest, ABlockThatIsTakenInPartFails) {
  takeBlocks(2);
  const Job job(library, printer);
  EXPECT_EQ(job.write("one"), 0);
}

TEST_F(PassThroughTest, ABlockThatIsRefusedFails) {
  takeBlocks(0, FALSE);
  const Job job(library, printer);
  EXPECT_EQ(job.write("one"), 0);
}

TEST_F(PassThroughTest, AnEmptyBlockSucceedsWhateverTheSpoolerSays) {
  takeBlocks(0, FALSE);
  const Job job(library, printer);
  EXPECT_EQ(job.write(""), 1);
  EXPECT_EQ(blocks.size(), 1U);
}

TEST_F(PassThroughTest, TheCountThatWasTakenDecides) {
  takeBlocks(3, FALSE);
  const Job job(library, printer);
  EXPECT_EQ(job.write("one"), 1);
}

TEST_F(PassThroughTest, ABlockThatCannotBeReadIsNotHandedOver) {
  takeBlocks();
  const Job job(library, printer);
  EXPECT_EQ(Driver(library).docWrite(job.handle(), nullptr, 3), 0);
  EXPECT_TRUE(blocks.empty());
}

TEST_F(PassThroughTest, NothingIsHandedOverAfterAFailedBlock) {
  takeBlocks(2);
  const Job job(library, printer);
  EXPECT_EQ(job.write("one"), 0);
  takeBlocks();
  EXPECT_EQ(job.write("two"), 0);
  EXPECT_EQ(blocks.size(), 1U);
}

TEST_F(PassThroughTest, MakesNoFileAndLeavesTheSpooledJob) {
  takeBlocks();
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(folder.files().empty());
  EXPECT_TRUE(queue.controls().empty());
}

TEST_F(PassThroughTest, TellsNobodyWhoWaitsForTheEnd) {
  takeBlocks();
  const Handle finished(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(WaitForSingleObject(finished.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
  EXPECT_EQ(lastFile(), std::nullopt);
  EXPECT_EQ(lastName(), std::nullopt);
}

TEST_F(PassThroughTest, SendsTheLauncherNoMessage) {
  useLauncher();
  takeBlocks();
  const Peer launcher(channelOf(user));
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_FALSE(launcher.receives(0));
}

TEST_F(PassThroughTest, NeedsNoLauncher) {
  useLauncher();
  takeBlocks();
  EXPECT_EQ(print(L"Document"), 1);
}

TEST_F(PassThroughTest, FailsOutsideADocumentOfTheSpooler) {
  const Job job(library, printer);
  EXPECT_EQ(job.write("one"), 0);
}

TEST_F(PassThroughTest, FillsADocumentOfTheSpooler) {
  const DWORD id = printer.beginDocument(L"Document");
  ASSERT_NE(id, 0U);
  Job job(library, printer, L"Document", id);
  EXPECT_EQ(job.write("one"), 1);
  EXPECT_EQ(job.end(), 1);
  // The spooler still has it.
  DWORD needed = 0;
  ::GetJobW(printer.handle(), id, 1, nullptr, 0, &needed);
  EXPECT_NE(needed, 0U);
  EXPECT_TRUE(::SetJobW(printer.handle(), id, 0, nullptr, JOB_CONTROL_DELETE));
}

}  // namespace
}  // namespace quillpress::harness
