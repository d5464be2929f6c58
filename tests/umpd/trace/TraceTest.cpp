// What the driver side tells the debugger when it has been built to trace.

#include <algorithm>
#include <string>
#include <vector>

#include "tests/umpd/harness/Boxes.h"
#include "tests/umpd/harness/DebuggerOutput.h"
#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Peer.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {
namespace {

class TraceTest : public ::testing::Test {
 protected:
  TraceTest() {
    settings.setText(L"DefaultSaveDir", folder.path());
    settings.setNumber(L"SaveFilenameAction", 3);
    pretendUser(library, user);
  }

  // Whether the debugger was told this.
  [[nodiscard]] bool isTold(const std::wstring& text) {
    for (const auto& each : debuggerOutput.take()) told_ += each;
    return told_.find(text) != std::wstring::npos;
  }

  Library library{L"quillpress_traced.dll"};
  Boxes boxes{library};
  DebuggerOutput debuggerOutput{library};
  const std::wstring user = ownUserName();
  const TemporaryFolder folder;
  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
  Queue queue{library};

 private:
  std::wstring told_;
};

TEST_F(TraceTest, WideTextsAndNumbersAreFilledIn) {
  const Peer launcher(channelOf(user));
  Job job(library, printer, L"Caf\u00E9 \u4E2D", 7);
  EXPECT_TRUE(isTold(L", jobId=7, printerName=["));
  EXPECT_TRUE(isTold(L"docName=[Caf\u00E9 \u4E2D]\n"));
  EXPECT_TRUE(isTold(L"finishprintev = 0\n"));
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_EQ(job.end(), 1);
}

// The texts of the field are searched for as they have always been.
TEST_F(TraceTest, TextsKeepTheirSpelling) {
  const Peer launcher(channelOf(user));
  Job job(library, printer.name());
  EXPECT_TRUE(isTold(L"getAllJobs returend 0\n"));
  EXPECT_TRUE(isTold(L">getCurrentPrintJobDocName - numjobss 0\n"));
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_TRUE(isTold(L"umdriver::write showUserInerface = 1\n"));
  EXPECT_EQ(job.end(), 1);
}

TEST_F(TraceTest, AMissingSectionIsToldAsAquire) {
  const Channel channel = channelOf(user);
  const Handle otherKind(CreateMutexW(nullptr, FALSE, channel.memory().c_str()));
  const Handle listening(CreateMutexW(nullptr, TRUE, channel.mutex().c_str()));
  Job job(library, printer);
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_TRUE(isTold(L"Aquire failed\n"));
  EXPECT_EQ(job.end(), 1);
}

TEST_F(TraceTest, NullTextsAreToldAsSuch) {
  const Driver driver(library);
  EXPECT_EQ(driver.docStart2K(nullptr, 1, nullptr, nullptr), 0U);
  EXPECT_TRUE(isTold(L"printerName=[(null)], docName=[(null)]\n"));
  EXPECT_EQ(boxes.take().size(), 1U);
}

}  // namespace
}  // namespace quillpress::harness
