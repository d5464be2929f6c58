// What is done for every job must not cost the printing process a handle each time.

#include <functional>

#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/harness/Watchdog.h"
#include "tests/unit/win32/support/JobTest.h"
#include "umpd/api/SpoolerInterface.h"
#include "umpd/settings/Registry.h"
#include "umpd/spooler/Identity.h"
#include "umpd/spooler/JobQueue.h"
#include "umpd/spooler/Printer.h"
#include "umpd/win32/NamedObjects.h"
#include "umpd/win32/ProgramRunner.h"

namespace quillpress::driver {
namespace {

class HandleLeaksTest : public classes::JobTest {
 protected:
  // A thousand rounds must leave as many handles open as ten do.
  static void expectNoLeak(const std::function<void()>& round) {
    harness::Watchdog::allow(240);
    for (int i = 0; i < 10; ++i) round();
    const unsigned long afterTen = harness::handleCount();
    for (int i = 0; i < 1000; ++i) round();
    harness::expectNoMoreHandlesThan(afterTen);
  }

  const std::wstring name = classes::newObjectName();
};

TEST_F(HandleLeaksTest, OfEvents) {
  expectNoLeak([&] {
    NamedEvent made(name);
    EXPECT_TRUE(made.create());
    EXPECT_TRUE(made.create());
    NamedEvent opened(name);
    EXPECT_TRUE(opened.set());
    EXPECT_TRUE(opened.open());
    EXPECT_EQ(opened.wait(0), static_cast<DWORD>(WAIT_OBJECT_0));
    NamedEvent missing(name + L".missing");
    EXPECT_FALSE(missing.set());
  });
}

TEST_F(HandleLeaksTest, OfMutexes) {
  expectNoLeak([&] {
    NamedMutex made(name);
    EXPECT_TRUE(made.create());
    EXPECT_TRUE(made.create());
    NamedMutex opened(name);
    const NamedMutex::Lock lock(opened);
    EXPECT_TRUE(lock);
    EXPECT_TRUE(NamedMutex::exists(name));
    EXPECT_FALSE(NamedMutex::exists(name + L".missing"));
  });
}

TEST_F(HandleLeaksTest, OfSections) {
  const KernelHandle otherKind(CreateEventW(nullptr, FALSE, FALSE, (name + L".event").c_str()));
  expectNoLeak([&] {
    SharedSection made(name, 1000);
    EXPECT_TRUE(made.openOrCreate());
    SharedSection opened(name, 1000);
    EXPECT_TRUE(opened.openOrCreate());
    SharedSection tooLarge(name, 100'000);
    EXPECT_FALSE(tooLarge.openOrCreate());
    SharedSection noSection(name + L".event", 1000);
    EXPECT_FALSE(noSection.openOrCreate());
  });
}

TEST_F(HandleLeaksTest, OfSecurityAttributes) {
  expectNoLeak([] { EXPECT_NE(SecurityAttributes().get(), nullptr); });
}

TEST_F(HandleLeaksTest, OfSpoolerQueries) {
  expectNoLeak([&] {
    EXPECT_EQ(PrinterInformation().readName(printer.handle()), printer.name());
    EXPECT_TRUE(openPrinter(printer.name(), PRINTER_ACCESS_USE));
    EXPECT_TRUE(readJobQueue(printer.handle()).empty());
    EXPECT_EQ(readDocumentName(printer.handle(), 4711), std::nullopt);
  });
}

TEST_F(HandleLeaksTest, OfThePortSearch) {
  expectNoLeak([] { EXPECT_EQ(findPrinterOnPort(L"\\\\no such\\port"), std::nullopt); });
}

TEST_F(HandleLeaksTest, OfTheUsersRegistry) {
  expectNoLeak([] {
    UserSid user;
    const UserRoot root(KEY_QUERY_VALUE, user);
    EXPECT_TRUE(root);
    EXPECT_EQ(readText(root.key(), L"no such value"), std::nullopt);
  });
}

TEST_F(HandleLeaksTest, OfTheUsersIdentity) {
  expectNoLeak([] {
    const SpoolerIdentity identity;
    EXPECT_TRUE(UserSid().text().starts_with(L"S-1-5-"));
  });
}

TEST_F(HandleLeaksTest, OfFailedPrograms) {
  ProgramRun run;
  run.application = L"C:\\no such folder\\program.exe";
  run.commandLine = run.application;
  expectNoLeak([&] { EXPECT_FALSE(runProgram(run)); });
}

TEST_F(HandleLeaksTest, OfWholeJobs) {
  expectNoLeak([&] {
    const JobHandle job = DrvSplStartDoc(printer.handle(), 0);
    unsigned long written = 0;
    EXPECT_EQ(DrvSplWritePrinter(job, "abc", 3, &written), 1);
    EXPECT_EQ(DrvSplEndDoc(job), 1);
    EXPECT_EQ(DrvSplClose(job), 1);
    DeleteFileW(outputFile().c_str());
  });
}

TEST_F(HandleLeaksTest, OfAbandonedJobs) {
  expectNoLeak([&] {
    const JobHandle job = DrvSplStartDoc(printer.handle(), 0);
    unsigned long written = 0;
    EXPECT_EQ(DrvSplWritePrinter(job, "abc", 3, &written), 1);
    EXPECT_EQ(DrvSplClose(job), 1);
    DeleteFileW(outputFile().c_str());
  });
}

TEST_F(HandleLeaksTest, OfJobsThatCannotBegin) {
  expectNoLeak([&] {
    EXPECT_EQ(DrvSplStartDoc(nullptr, 0), 0U);
    EXPECT_EQ(takeBoxes().size(), 1U);
  });
}

}  // namespace
}  // namespace quillpress::driver
