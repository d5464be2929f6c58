#include <algorithm>
#include <array>
#include <optional>

#include "tests/unit/win32/support/JobTest.h"
#include "umpd/api/SpoolerInterface.h"

namespace quillpress::driver {
namespace {

class SpoolerInterfaceTest : public classes::JobTest {
 protected:
  ~SpoolerInterfaceTest() override {
    if (job_ != 0) static_cast<void>(DrvSplClose(job_));
  }

  // A job of the printer, closed at the end unless the test does so.
  JobHandle start(DWORD id = 0) {
    job_ = DrvSplStartDoc(printer.handle(), id);
    EXPECT_NE(job_, 0U);
    return job_;
  }

  int close() { return DrvSplClose(std::exchange(job_, 0)); }

  static int write(JobHandle job, const std::string& bytes) {
    unsigned long written = 0;
    const int result =
        DrvSplWritePrinter(job, bytes.data(), static_cast<unsigned long>(bytes.size()), &written);
    EXPECT_EQ(written, bytes.size());
    return result;
  }

  static std::uint32_t flagsOf(JobHandle job) {
    const UmDriver* driver = JobTable::find(job);
    EXPECT_NE(driver, nullptr);
    return driver == nullptr ? 0 : driver->stateFlags();
  }

  // The call must fail with exactly this box.
  void expectInvalid(int result, const std::wstring& text) {
    EXPECT_EQ(result, 0);
    EXPECT_EQ(takeBoxes(), (std::vector<std::wstring>{L"[Error] " + text}));
  }

  // Handles that no job has: nothing, nonsense, and the address of something else.
  [[nodiscard]] std::array<JobHandle, 3> handlesOfNothing() const {
    return {0, 1, static_cast<JobHandle>(reinterpret_cast<std::uintptr_t>(this))};
  }

 private:
  JobHandle job_ = 0;
};

TEST_F(SpoolerInterfaceTest, StartDocGivesAnInitialisedJob) {
  EXPECT_EQ(flagsOf(start()), static_cast<std::uint32_t>(UmDriver::kInitialised));
}

TEST_F(SpoolerInterfaceTest, StartDocKnowsTheSpoolersJob) {
  const DWORD id = printer.beginDocument(L"Report");
  const UmDriver* driver = JobTable::find(start(id));
  ASSERT_NE(driver, nullptr);
  EXPECT_EQ(driver->jobId(), id);
  EXPECT_EQ(driver->documentName(), L"Report");
}

TEST_F(SpoolerInterfaceTest, StartDocUsesTheSettingsOfThePrinter) {
  UmDriver* driver = JobTable::find(start());
  ASSERT_NE(driver, nullptr);
  EXPECT_EQ(driver->settings().naming().effectiveName(), printer.name());
  EXPECT_EQ(driver->settings().getInt(L"FinishPrintEv", 0), 1);
}

TEST_F(SpoolerInterfaceTest, StartDocFailsWithoutAPrinter) {
  EXPECT_EQ(DrvSplStartDoc(nullptr, 1), 0U);
  EXPECT_EQ(takeBoxes(), std::vector<std::wstring>{L"[Error] umpd - No printer handle or name"});
}

TEST_F(SpoolerInterfaceTest, StartDocFailsWithAnInvalidPrinter) {
  EXPECT_EQ(DrvSplStartDoc(reinterpret_cast<void*>(0x1234), 1), 0U);
  const std::vector<std::wstring> boxes = takeBoxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_TRUE(
      boxes[0].starts_with(L"[Error] umpd - Could not retrieve printer info - handle [4660](0x1234), ["))
      << boxes[0];
}

TEST_F(SpoolerInterfaceTest, BlocksReachTheFileUnchanged) {
  const JobHandle job = start();
  EXPECT_EQ(write(job, "%!PS\r\n"), 1);
  EXPECT_EQ(write(job, ""), 1);
  EXPECT_EQ(write(job, std::string("\0\xFF", 2)), 1);
  EXPECT_EQ(DrvSplEndDoc(job), 1);
  EXPECT_EQ(harness::readFile(outputFile()), std::string("%!PS\r\n\0\xFF", 8));
}

TEST_F(SpoolerInterfaceTest, TheCountIsStoredBeforeAnythingElse) {
  for (const JobHandle job : handlesOfNothing()) {
    unsigned long written = 7;
    expectInvalid(DrvSplWritePrinter(job, "abc", 3, &written), L"DrvSplWritePrinter - invalid parms");
    EXPECT_EQ(written, 3U);
  }
}

TEST_F(SpoolerInterfaceTest, TheCountIsStoredForABlockThatFailsToo) {
  const JobHandle job = start();
  imports.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) -> BOOL { return FALSE; });
  EXPECT_EQ(write(job, "abc"), 0);
  EXPECT_EQ(write(job, "defgh"), 0);
}

TEST_F(SpoolerInterfaceTest, AfterAFailedBlockEveryOtherFails) {
  const JobHandle job = start();
  EXPECT_EQ(write(job, "first"), 1);
  imports.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED) -> BOOL {
    *written = 0;
    return FALSE;
  });
  EXPECT_EQ(write(job, "second"), 0);
  imports.restore("WriteFile");
  EXPECT_EQ(flagsOf(job), static_cast<std::uint32_t>(UmDriver::kInitialised | UmDriver::kWriteFailed));
  EXPECT_EQ(write(job, "third"), 0);
  EXPECT_EQ(DrvSplEndDoc(job), 1);
  EXPECT_EQ(harness::readFile(outputFile()), "first");
}

TEST_F(SpoolerInterfaceTest, EndDocLeavesTheJobToBeClosed) {
  const JobHandle job = start(printer.beginDocument(L"Report"));
  EXPECT_EQ(write(job, "abc"), 1);
  EXPECT_EQ(DrvSplEndDoc(job), 1);
  EXPECT_EQ(flagsOf(job), static_cast<std::uint32_t>(UmDriver::kEnded));
  EXPECT_EQ(controls.size(), 1U);
  EXPECT_EQ(close(), 1);
  EXPECT_EQ(JobTable::find(job), nullptr);
}

TEST_F(SpoolerInterfaceTest, AnEndedJobIsInvalidForAllButClose) {
  const JobHandle job = start();
  EXPECT_EQ(DrvSplEndDoc(job), 1);
  unsigned long written = 0;
  expectInvalid(DrvSplWritePrinter(job, "abc", 3, &written), L"DrvSplWritePrinter - invalid parms");
  expectInvalid(DrvSplEndDoc(job), L"DrvSplEndDoc - invalid parms");
  expectInvalid(DrvSplStartPage(job), L"DrvSplStartPage invalid parms");
  expectInvalid(DrvSplEndPage(job), L"DrvSplEndPage invalid parms");
  expectInvalid(DrvSplAbort(job), L"DrvSplAbort invalid parms");
  EXPECT_EQ(close(), 1);
}

TEST_F(SpoolerInterfaceTest, InvalidHandlesShowTheirBoxes) {
  for (const JobHandle job : handlesOfNothing()) {
    expectInvalid(DrvSplEndDoc(job), L"DrvSplEndDoc - invalid parms");
    expectInvalid(DrvSplClose(job), L"DrvSplClose - invalid parms");
    expectInvalid(DrvSplStartPage(job), L"DrvSplStartPage invalid parms");
    expectInvalid(DrvSplEndPage(job), L"DrvSplEndPage invalid parms");
    expectInvalid(DrvSplAbort(job), L"DrvSplAbort invalid parms");
  }
}

TEST_F(SpoolerInterfaceTest, AClosedJobIsInvalidForAll) {
  const JobHandle job = start();
  EXPECT_EQ(close(), 1);
  unsigned long written = 0;
  expectInvalid(DrvSplWritePrinter(job, "abc", 3, &written), L"DrvSplWritePrinter - invalid parms");
  expectInvalid(DrvSplEndDoc(job), L"DrvSplEndDoc - invalid parms");
  expectInvalid(DrvSplClose(job), L"DrvSplClose - invalid parms");
}

// The signature is the number that stands behind the printer's information; whoever spoils it has written
// over the job.
TEST_F(SpoolerInterfaceTest, AJobWithASpoiledSignatureIsLeftAlone) {
  const JobHandle job = start();
  auto* const words = reinterpret_cast<std::uint32_t*>(static_cast<std::uintptr_t>(job));
  auto* const signature = std::find(words, words + sizeof(UmDriver) / sizeof *words, UmDriver::kSignature);
  ASSERT_NE(signature, words + sizeof(UmDriver) / sizeof *words);
  *signature = 0;
  expectInvalid(DrvSplClose(job), L"DrvSplClose - invalid parms");
  expectInvalid(DrvSplEndDoc(job), L"DrvSplEndDoc - invalid parms");
  *signature = UmDriver::kSignature;
  EXPECT_NE(JobTable::find(job), nullptr);
  EXPECT_EQ(DrvSplEndDoc(job), 1);
}

TEST_F(SpoolerInterfaceTest, ClosingARunningJobLeavesItsFileAndTellsNobody) {
  const KernelHandle finished(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  const JobHandle job = start(printer.beginDocument(L"Report"));
  EXPECT_EQ(write(job, "abc"), 1);
  EXPECT_EQ(close(), 1);
  EXPECT_EQ(harness::readFile(outputFile()), "abc");
  EXPECT_TRUE(controls.empty());
  EXPECT_EQ(WaitForSingleObject(finished.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(SpoolerInterfaceTest, PagesBeginAndEndWithoutTrace) {
  const JobHandle job = start();
  EXPECT_EQ(DrvSplStartPage(job), 1);
  EXPECT_EQ(DrvSplEndPage(job), 1);
  EXPECT_EQ(flagsOf(job), static_cast<std::uint32_t>(UmDriver::kInitialised));
  EXPECT_FALSE(harness::fileExists(outputFile()));
}

TEST_F(SpoolerInterfaceTest, AbortOnlySetsItsFlag) {
  const JobHandle job = start();
  EXPECT_EQ(write(job, "before"), 1);
  EXPECT_EQ(DrvSplAbort(job), 1);
  EXPECT_EQ(flagsOf(job), static_cast<std::uint32_t>(UmDriver::kInitialised | UmDriver::kAborted));
  EXPECT_EQ(write(job, ", after"), 1);
  EXPECT_EQ(DrvSplStartPage(job), 1);
  EXPECT_EQ(DrvSplEndDoc(job), 1);
  EXPECT_EQ(harness::readFile(outputFile()), "before, after");
}

}  // namespace
}  // namespace quillpress::driver
