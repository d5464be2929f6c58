// Several processes and threads print at once, through one mutex and one launcher.

#include <map>

#include "tests/umpd/harness/Watchdog.h"
#include "tests/umpd/launcher/support/Peer.h"
#include "tests/umpd/together/JobBytes.h"
#include "tests/umpd/together/TogetherTest.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kGo[] = L"quillpress together go";
constexpr int kJobs = 20;
constexpr int kBlocks = 10;

class ProcessesTest : public TogetherTest {
 protected:
  // Every message speaks of one job alone, and each printer tells begin and end in turns.
  void checkMessages(const std::vector<Record>& records) {
    std::map<std::string, std::string> prefixes{{narrow(printer.name()), "one"},
                                                {narrow(otherPrinter.name()), "two"}};
    std::map<std::string, int> messages;
    for (const Record& record : records) {
      const std::string name = textOf(record, field::kPrinterName);
      ASSERT_TRUE(prefixes.contains(name)) << name;
      const int number = messages[name]++;
      const std::string command = textOf(record, field::kCommand);
      EXPECT_EQ(command, number % 2 == 0 ? "startprint" : "stopprint");
      if (command != "stopprint") continue;
      const std::string document = prefixes[name] + "-" + std::to_string(number / 2);
      EXPECT_EQ(textOf(record, field::kDocumentName), document);
      EXPECT_EQ(textOf(record, field::kOutputPath), narrow(fileOf(widen(document))));
    }
  }

  void checkFiles(const std::wstring& prefix) {
    for (int job = 0; job < kJobs; ++job) {
      const std::wstring name = prefix + L"-" + std::to_wstring(job);
      EXPECT_TRUE(readFile(fileOf(name)) == bytesOfJob(name, kBlocks)) << narrow(name);
    }
  }
};

TEST_F(ProcessesTest, TwoProcessesPrintAtOnce) {
  const Peer peer(channel);
  const Handle go(CreateEventW(nullptr, TRUE, FALSE, kGo));
  const std::wstring event = L"\"" + std::wstring(kGo) + L"\"";
  {
    const Process one(printJobs(printer, L"one", kJobs, kBlocks, event));
    const Process two(printJobs(otherPrinter, L"two", kJobs, kBlocks, event));
    SetEvent(go.get());
    EXPECT_EQ(one.exitCode(), 0U);
    EXPECT_EQ(two.exitCode(), 0U);
  }
  EXPECT_EQ(peer.records().size(), 4U * kJobs);
  checkMessages(peer.records());
  checkFiles(L"one");
  checkFiles(L"two");
}

TEST_F(ProcessesTest, TheyReallyTakeTurns) {
  // Otherwise the test above would not show much.
  const Peer peer(channel);
  const Handle go(CreateEventW(nullptr, TRUE, FALSE, kGo));
  const std::wstring event = L"\"" + std::wstring(kGo) + L"\"";
  {
    const Process one(printJobs(printer, L"one", kJobs, kBlocks, event));
    const Process two(printJobs(otherPrinter, L"two", kJobs, kBlocks, event));
    Sleep(500);
    SetEvent(go.get());
    EXPECT_EQ(one.exitCode(), 0U);
    EXPECT_EQ(two.exitCode(), 0U);
  }
  int turns = 0;
  for (std::size_t i = 1; i < peer.records().size(); ++i) {
    if (textOf(peer.records()[i], field::kPrinterName) != textOf(peer.records()[i - 1], field::kPrinterName))
      ++turns;
  }
  EXPECT_GT(turns, 2);
}

TEST_F(ProcessesTest, TwoThreadsOfAProcessPrintAtOnce) {
  const Peer peer(channel);
  const auto print = [&](const Printer& on, const std::wstring& prefix) {
    for (int number = 0; number < kJobs; ++number) {
      const std::wstring name = prefix + L"-" + std::to_wstring(number);
      Job job(library, on, name, 1);
      for (int block = 0; block < kBlocks; ++block) {
        EXPECT_EQ(job.write(bytesOfJob(name, kBlocks).substr(block * kBlockSize, kBlockSize)), 1);
      }
      EXPECT_EQ(job.end(), 1);
    }
  };
  {
    const Thread one([&] { print(printer, L"one"); });
    const Thread two([&] { print(otherPrinter, L"two"); });
  }
  checkMessages(peer.records());
  checkFiles(L"one");
  checkFiles(L"two");
}

TEST_F(ProcessesTest, JobsOfOneProcessMayOverlap) {
  const Peer peer(channel);
  Job first(library, printer, L"one-0", 1);
  Job second(library, otherPrinter, L"two-0", 2);
  EXPECT_EQ(first.write("a"), 1);
  EXPECT_EQ(second.write("b"), 1);
  EXPECT_EQ(first.write("a"), 1);
  EXPECT_EQ(second.end(), 1);
  EXPECT_EQ(first.write("a"), 1);
  EXPECT_EQ(first.end(), 1);
  EXPECT_EQ(readFile(fileOf(L"one-0")), "aaa");
  EXPECT_EQ(readFile(fileOf(L"two-0")), "b");
  checkMessages(peer.records());
}

// A process that is ended while it holds the mutex of all jobs.
class KilledProcessTest : public ProcessesTest {
 protected:
  static Peer::Options silent() {
    Peer::Options options;
    options.acknowledges = false;
    return options;
  }
};

TEST_F(KilledProcessTest, TheMutexThatItLeavesIsTakenOver) {
  {
    const Peer peer(channel, silent());
    const Process waiting(printJobs(printer, L"one", 1, 1));
    ASSERT_TRUE(peer.receives());
    // Now it waits for the answer, as the owner of the mutex.
    const Thread blocked([&] {
      Job job(library, otherPrinter, L"two-0", 2);
      EXPECT_NE(job.handle(), 0U);
    });
    EXPECT_FALSE(blocked.endsWithin(500));
    waiting.kill();
    EXPECT_TRUE(blocked.endsWithin(10000));
  }
  const Peer peer(channel);
  Job job(library, otherPrinter, L"two-0", 2);
  EXPECT_EQ(job.write("b"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(readFile(fileOf(L"two-0")), "b");
  checkMessages(peer.records());
}

TEST_F(KilledProcessTest, OtherProcessesGoOn) {
  std::optional<Peer> peer(std::in_place, channel, silent());
  const Process killed(printJobs(printer, L"one", 1, 1));
  ASSERT_TRUE(peer->receives());
  const Process waiting(printJobs(otherPrinter, L"two", kJobs, kBlocks));
  EXPECT_FALSE(waiting.endsWithin(500));
  peer.reset();
  peer.emplace(channel);
  killed.kill();
  EXPECT_EQ(waiting.exitCode(), 0U);
  checkFiles(L"two");
}

}  // namespace
}  // namespace quillpress::harness
