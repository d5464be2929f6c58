// What stays behind when many jobs have come and gone: nothing.

#include <windows.h>
// After windows.h.
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>

#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/harness/Watchdog.h"
#include "tests/umpd/launcher/support/Peer.h"
#include "tests/umpd/together/HeapCount.h"
#include "tests/umpd/together/TogetherTest.h"

namespace quillpress::harness {
namespace {

class LeaksTest : public TogetherTest {
 protected:
  LeaksTest() { Watchdog::allow(200); }

  // After 150 rounds no more handles are open than after 10. Each round may use `number` for names.
  static void expectFlat(const std::function<void(int number)>& round) {
    unsigned long afterTen = 0;
    for (int number = 1; number <= 150; ++number) {
      round(number);
      if (number == 10) afterTen = handleCount();
    }
    // A peer may close its own handle a moment after it has answered.
    expectNoMoreHandlesThan(afterTen);
  }

  void dontPause() {
    library.replace("Sleep", [](DWORD) {});
  }
};

TEST_F(LeaksTest, WholeJobs) {
  const Peer peer(channel);
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 1);
    EXPECT_EQ(job.write("b"), 1);
    EXPECT_EQ(job.end(), 1);
    DeleteFileW(fileOf(L"Document").c_str());
  });
}

TEST_F(LeaksTest, JobsByPrinterName) {
  const Peer peer(channel);
  expectFlat([&](int) {
    Job job(library, printer.name());
    EXPECT_EQ(job.write("a"), 1);
    EXPECT_EQ(job.end(), 1);
    for (const std::wstring& name : folder.files()) DeleteFileW(folder.file(name).c_str());
  });
}

TEST_F(LeaksTest, JobsWithoutAByte) {
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.end(), 1);
  });
}

TEST_F(LeaksTest, JobsWithTheFinishEvent) {
  SettingsKey::ofPrinter(printer.name()).setNumber(L"FinishPrintEv", 1);
  const Handle event(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 1);
    EXPECT_EQ(job.end(), 1);
    DeleteFileW(fileOf(L"Document").c_str());
  });
}

TEST_F(LeaksTest, JobsOnPrintersThatDoNotExist) {
  expectFlat([&](int number) {
    const Job job(library, L"No such printer " + std::to_wstring(number));
    EXPECT_EQ(job.handle(), 0U);
    EXPECT_EQ(boxes.take().size(), 1U);
  });
}

TEST_F(LeaksTest, JobsWithoutALauncher) {
  dontPause();
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 0);
    EXPECT_EQ(boxes.take().size(), 1U);
    EXPECT_EQ(job.end(), 1);
  });
}

TEST_F(LeaksTest, JobsWhoseFileCannotBeMade) {
  // A file in the place of the folder.
  writeFile(folder.file(L"plain"), "");
  SettingsKey::ofPrinter(printer.name()).setText(L"DefaultSaveDir", folder.file(L"plain"));
  const Peer peer(channel);
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 0);
    EXPECT_EQ(job.write("a"), 0);
    EXPECT_EQ(job.end(), 1);
    static_cast<void>(boxes.take());
  });
}

TEST_F(LeaksTest, JobsWhoseDiskIsFull) {
  library.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED) -> BOOL {
    *written = 0;
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
  });
  const Peer peer(channel);
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 0);
    EXPECT_EQ(job.end(), 1);
    static_cast<void>(boxes.take());
    DeleteFileW(fileOf(L"Document").c_str());
  });
}

TEST_F(LeaksTest, JobsWhoseMessagesFail) {
  Peer::Options options;
  options.requestEvent = false;
  const Peer peer(channel, options);
  expectFlat([&](int) {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 1);
    EXPECT_EQ(job.end(), 1);
    EXPECT_EQ(boxes.take().size(), 2U);
    DeleteFileW(fileOf(L"Document").c_str());
  });
}

TEST_F(LeaksTest, CallsWithoutAJob) {
  const Driver driver(library);
  expectFlat([&](int) {
    EXPECT_EQ(driver.docWrite(0, "a", 1), 0);
    EXPECT_EQ(driver.docEnd(0), 0);
    EXPECT_EQ(boxes.take().size(), 2U);
  });
}

// Memory that Windows counts for this process.
std::size_t memoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof counters;
  EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
  EXPECT_GT(counters.WorkingSetSize, 0U);
  return counters.WorkingSetSize;
}

// The named objects of this session, as far as Windows tells.
int namedObjects() {
  int count = 0;
  for (const wchar_t* const name : {L"FinishPrintEv", L"DomainControllerData", L"umdriver"}) {
    count += Handle(OpenEventW(SYNCHRONIZE, FALSE, name)) ? 1 : 0;
    count += Handle(OpenFileMappingW(FILE_MAP_READ, FALSE, name)) ? 1 : 0;
    count += Handle(OpenMutexW(SYNCHRONIZE, FALSE, (L"Global\\" + std::wstring(name)).c_str())) ? 1 : 0;
  }
  return count;
}

// How many jobs: 500, or what the environment variable QUILLPRESS_SOAK_JOBS says.
int soakJobs() {
  const char* const text = std::getenv("QUILLPRESS_SOAK_JOBS");
  return text == nullptr ? 500 : std::max(200, std::atoi(text));
}

// Prints jobs, calling `before` with the number of each.
class SoakTest : public LeaksTest {
 protected:
  // Windows as it is. What stands in for it elsewhere keeps notes, of every function that is asked for by
  // name for instance: some 290 bytes a job, which were all that grew here.
  SoakTest() { library.restoreAll(); }

  void expectFlatJobs(const std::function<void(int number)>& before) {
    const int jobs = soakJobs();
    Watchdog::allow(60 + static_cast<unsigned>(jobs) / 10);
    std::size_t earlyMemory = 0;
    unsigned long earlyHandles = 0;
    int earlyObjects = 0;
    for (int number = 1; number <= jobs; ++number) {
      before(number);
      Job job(library, printer, L"Document", 1);
      ASSERT_EQ(job.write("a"), 1);
      ASSERT_EQ(job.end(), 1);
      DeleteFileW(fileOf(L"Document").c_str());
      // The heaps of Windows and of the tests have warmed up.
      if (number != jobs / 2) continue;
      earlyMemory = memoryInUse();
      earlyHandles = handleCount();
      earlyObjects = namedObjects();
    }
    expectNoMoreHandlesThan(earlyHandles);
    EXPECT_EQ(namedObjects(), earlyObjects);
    const std::size_t memory = memoryInUse();
    // However many the jobs: Wine's own heap moves by some pages. HeapTest looks at the library's share.
    EXPECT_LT(memory, earlyMemory + 400UL * 1024);
    std::printf("%d jobs: memory %lu -> %lu KB, handles %lu -> %lu, named objects %d -> %d\n", jobs,
                static_cast<unsigned long>(earlyMemory / 1024), static_cast<unsigned long>(memory / 1024),
                earlyHandles, handleCount(), earlyObjects, namedObjects());
  }
};

TEST_F(SoakTest, OfJobsThatTellTheLauncher) {
  std::optional<Peer> peer;
  expectFlatJobs([&](int number) {
    // It keeps every record, and shall not be what grows.
    if (number % 50 == 1) peer.emplace(channel);
  });
}

TEST_F(SoakTest, OfJobsWithTheFinishEvent) {
  SettingsKey::ofPrinter(printer.name()).setNumber(L"FinishPrintEv", 1);
  const Handle event(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  expectFlatJobs([](int) {});
}

// The library's own share of the memory, to the byte.
class HeapTest : public SoakTest {
 protected:
  // 50 rounds leave no more on the library's heap than 5: what is kept for the life of a process is kept by
  // then.
  void expectNothingStays(const std::function<void()>& round) {
    const HeapCount heap(library);
    for (int i = 0; i < 5; ++i) round();
    const std::size_t blocks = HeapCount::blocks();
    const std::size_t bytes = HeapCount::bytes();
    const std::size_t taken = HeapCount::taken();
    for (int i = 0; i < 45; ++i) round();
    EXPECT_EQ(HeapCount::blocks(), blocks);
    EXPECT_EQ(HeapCount::bytes(), bytes);
    EXPECT_GT(HeapCount::taken(), taken + 45) << "the rounds are not counted";
  }

  void printWithMetadata() {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 1);
    EXPECT_NE(job.text(L"pdfaXML"), L"");
    EXPECT_EQ(job.end(), 1);
    DeleteFileW(fileOf(L"Document").c_str());
  }
};

TEST_F(HeapTest, OfJobsThatTellTheLauncher) {
  const Peer peer(channel);
  expectNothingStays([&] { printWithMetadata(); });
}

TEST_F(HeapTest, OfJobsWithTheFinishEvent) {
  SettingsKey::ofPrinter(printer.name()).setNumber(L"FinishPrintEv", 1);
  const Handle event(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  expectNothingStays([&] { printWithMetadata(); });
}

TEST_F(HeapTest, OfJobsByPrinterNameOnWindowsNt4) {
  pretend(library, kWindowsNt4);
  LoadedByName ofNt4(library);
  ofNt4.makeAbsent("RegOpenCurrentUser");
  SettingsKey::ofPrinter(printer.name()).setNumber(L"FinishPrintEv", 1);
  expectNothingStays([&] {
    Job job(library, printer.name());
    EXPECT_EQ(job.write("a"), 1);
    EXPECT_EQ(job.end(), 1);
    for (const std::wstring& name : folder.files()) DeleteFileW(folder.file(name).c_str());
  });
}

TEST_F(HeapTest, OfJobsWhoseFileCannotBeMade) {
  // A file in the place of the folder.
  writeFile(folder.file(L"plain"), "");
  SettingsKey::ofPrinter(printer.name()).setText(L"DefaultSaveDir", folder.file(L"plain"));
  Boxes answered(library);
  const Peer peer(channel);
  expectNothingStays([&] {
    Job job(library, printer, L"Document", 1);
    EXPECT_EQ(job.write("a"), 0);
    EXPECT_EQ(job.end(), 1);
    static_cast<void>(answered.take());
  });
}

TEST_F(LeaksTest, ALongJobNeedsNoMoreMemoryThanAShortOne) {
  constexpr int kBlocks = 1024;  // 64 MB
  const std::string block(64UL * 1024, 'x');
  const Peer peer(channel);
  Job job(library, printer, L"Document", 1);
  std::size_t early = 0;
  std::size_t most = 0;
  for (int number = 1; number <= kBlocks; ++number) {
    ASSERT_EQ(job.write(block), 1);
    if (number == 16) early = memoryInUse();
    if (number > 16 && number % 16 == 0) most = std::max(most, memoryInUse());
  }
  EXPECT_EQ(job.end(), 1);
  EXPECT_LT(most, early + 512UL * 1024);
  WIN32_FILE_ATTRIBUTE_DATA file{};
  EXPECT_TRUE(GetFileAttributesExW(fileOf(L"Document").c_str(), GetFileExInfoStandard, &file));
  EXPECT_EQ(file.nFileSizeLow, kBlocks * block.size());
}

}  // namespace
}  // namespace quillpress::harness
