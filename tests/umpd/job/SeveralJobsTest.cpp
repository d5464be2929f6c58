// Jobs beside and after each other, and jobs that nobody ends.

#include <array>
#include <string>
#include <vector>

#include "tests/umpd/harness/FreshProcess.h"
#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/job/JobMutex.h"
#include "tests/umpd/job/JobTest.h"
#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Peer.h"

namespace quillpress::harness {
namespace {

using SeveralJobsTest = JobTest;

TEST_F(SeveralJobsTest, WriteIntoTheirOwnFiles) {
  Job first(library, printer, L"first", 1);
  Job second(library, printer, L"second", 2);
  EXPECT_NE(first.handle(), second.handle());
  EXPECT_EQ(first.write("1a"), 1);
  EXPECT_EQ(second.write("2a"), 1);
  EXPECT_EQ(first.write("1b"), 1);
  EXPECT_EQ(first.end(), 1);
  EXPECT_EQ(second.write("2b"), 1);
  EXPECT_EQ(second.end(), 1);
  EXPECT_EQ(readFile(folder.file(L"first.pdf")), "1a1b");
  EXPECT_EQ(readFile(folder.file(L"second.pdf")), "2a2b");
}

TEST_F(SeveralJobsTest, OfTheSameDocumentGetDifferentFiles) {
  Job first(library, printer, L"same", 1);
  Job second(library, printer, L"same", 2);
  EXPECT_EQ(first.write("one"), 1);
  EXPECT_EQ(second.write("two"), 1);
  EXPECT_EQ(first.end(), 1);
  EXPECT_EQ(lastFile(), folder.file(L"same.pdf"));
  EXPECT_EQ(second.end(), 1);
  EXPECT_NE(lastFile(), folder.file(L"same.pdf"));
  EXPECT_EQ(readFile(folder.file(L"same.pdf")), "one");
  EXPECT_EQ(readFile(*lastFile()), "two");
}

TEST_F(SeveralJobsTest, HaveTheirOwnPrinters) {
  const Printer other;
  const SettingsKey otherSettings = SettingsKey::ofPrinter(other.name());
  otherSettings.setNumber(L"marker", 2);
  settings.setNumber(L"marker", 1);
  const Job first(library, printer);
  const Job second(library, other);
  EXPECT_EQ(first.number(L"marker"), 1);
  EXPECT_EQ(second.number(L"marker"), 2);
}

TEST_F(SeveralJobsTest, FailOnTheirOwn) {
  Job first(library, printer, L"first", 1);
  settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
  Job second(library, printer, L"second", 2);
  EXPECT_EQ(second.write("x"), 0);
  EXPECT_EQ(first.write("x"), 1);
}

TEST_F(SeveralJobsTest, OnSeveralThreadsTakeTurns) {
  constexpr int kBlocks = 50;
  const auto printMany = [this](wchar_t name) {
    Job job(library, printer, std::wstring(1, name), 1);
    for (int i = 0; i < kBlocks; ++i) EXPECT_EQ(job.write(std::string(100, static_cast<char>(name))), 1);
    EXPECT_EQ(job.end(), 1);
  };
  {
    const Thread first([&] { printMany(L'a'); });
    const Thread second([&] { printMany(L'b'); });
    printMany(L'c');
  }
  EXPECT_EQ(readFile(folder.file(L"a.pdf")), std::string(100 * kBlocks, 'a'));
  EXPECT_EQ(readFile(folder.file(L"b.pdf")), std::string(100 * kBlocks, 'b'));
  EXPECT_EQ(readFile(folder.file(L"c.pdf")), std::string(100 * kBlocks, 'c'));
}

TEST_F(SeveralJobsTest, LeaveNoHandlesBehind) {
  const auto printSome = [this](int count) {
    for (int i = 0; i < count; ++i) {
      EXPECT_EQ(print(L"Document"), 1);
      Job named(library, printer.name());
      EXPECT_EQ(named.write("x"), 1);
      EXPECT_EQ(named.end(), 1);
    }
  };
  printSome(5);
  const unsigned long before = handleCount();
  printSome(50);
  expectNoMoreHandlesThan(before);
}

TEST_F(SeveralJobsTest, ThatFailLeaveNoHandlesBehind) {
  settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
  const auto failSome = [this](int count) {
    for (int i = 0; i < count; ++i) {
      EXPECT_EQ(print(L"Document"), 0);
      EXPECT_EQ(Job(library, L"No printer of this name").handle(), 0U);
      EXPECT_EQ(driver.docEnd(0), 0);
    }
    EXPECT_EQ(boxes.take().size(), 2U * static_cast<std::size_t>(count));
  };
  failSome(5);
  const unsigned long before = handleCount();
  failSome(50);
  expectNoMoreHandlesThan(before);
}

// A driver that is unloaded in the middle of a job, as when its process gives up. What such a job has open
// stays open until its process ends.
class AbandonedJobTest : public ::testing::Test {
 protected:
  AbandonedJobTest() {
    // The fresh process keeps its file open to its end, so the folder belongs to the process that waits.
    std::array<wchar_t, MAX_PATH> path{};
    if (GetEnvironmentVariableW(kFolderVariable, path.data(), MAX_PATH) != 0) {
      outputFolder = path.data();
    } else {
      SetEnvironmentVariableW(kFolderVariable, outputFolder.c_str());
    }
    settings.setText(L"DefaultSaveDir", outputFolder);
  }
  ~AbandonedJobTest() override { SetEnvironmentVariableW(kFolderVariable, nullptr); }

  // One block, and the library goes.
  void abandon() const {
    Library library;
    Boxes boxes(library);
    pretendUser(library, user);
    const Driver driver(library);
    std::wstring name = L"Document";
    const JobHandle job = driver.docStart2K(printer.handle(), 1, name.data(), name.data());
    EXPECT_EQ(driver.docWrite(job, "half", 4), 1);
  }

  static constexpr wchar_t kFolderVariable[] = L"QUILLPRESS_ABANDONED_JOB_FOLDER";

  const std::wstring user = ownUserName();
  const TemporaryFolder folder;
  std::wstring outputFolder = folder.path();
  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
};

TEST_F(AbandonedJobTest, LeavesAPartOfTheFileAndTellsNobody) {
  inFreshProcess([this] {
    settings.setNumber(L"FinishPrintEv", 1);
    const Handle finished(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
    abandon();
    EXPECT_EQ(GetModuleHandleW(L"quillpress.dll"), nullptr);
    EXPECT_EQ(readFile(outputFolder + L"\\Document.pdf"), "half");
    EXPECT_EQ(settings.text(L"lastfile"), std::nullopt);
    EXPECT_EQ(WaitForSingleObject(finished.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
  });
}

TEST_F(AbandonedJobTest, SendsTheLauncherNoMessage) {
  inFreshProcess([this] {
    settings.setNumber(L"showPrintStatusWin", 0);
    const Peer launcher(channelOf(user));
    abandon();
    EXPECT_FALSE(launcher.receives(0));
  });
}

TEST_F(AbandonedJobTest, LeavesTheMutexFree) {
  inFreshProcess([this] {
    settings.setNumber(L"FinishPrintEv", 1);
    abandon();
    EXPECT_TRUE(isJobMutexFree());
  });
}

}  // namespace
}  // namespace quillpress::harness
