#include "postscript/lib/pdf/PdfObjectList.h"
#include "tests/unit/win32/support/JobTest.h"
#include "umpd/job/UmDriver.h"

namespace quillpress::driver {
namespace {

std::span<const std::byte> bytes(std::string_view text) {
  return {reinterpret_cast<const std::byte*>(text.data()), text.size()};
}

class UmDriverTest : public classes::JobTest {
 protected:
  // Everything that a reset empties.
  static void expectReset(const UmDriver& job) {
    EXPECT_TRUE(job.hasSignature());
    EXPECT_EQ(job.jobId(), 0U);
    EXPECT_EQ(job.outputPath(), L"");
    EXPECT_EQ(job.userName(), L"");
    EXPECT_EQ(job.documentName(), L"");
    EXPECT_EQ(job.bytesWritten(), 0U);
  }

  // The names of the mutexes made by `body`.
  std::vector<std::wstring> mutexesMadeBy(const std::function<void()>& body) {
    auto* const make = classes::real<decltype(CreateMutexW)>(L"kernel32.dll", "CreateMutexW");
    std::vector<std::wstring> names;
    imports.replace("CreateMutexW",
                    [&names, make](LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR name) -> HANDLE {
                      EXPECT_EQ(owned, FALSE);
                      names.emplace_back(name);
                      return make(security, owned, name);
                    });
    body();
    imports.restore("CreateMutexW");
    return names;
  }
};

TEST_F(UmDriverTest, ANewJobIsNotInitialised) {
  const UmDriver job;
  EXPECT_EQ(job.stateFlags(), 0U);
  expectReset(job);
}

TEST_F(UmDriverTest, TheSignatureIsReadable) {
  const std::uint32_t signature = UmDriver::kSignature;
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&signature), 4), "DSWT");
}

TEST_F(UmDriverTest, TheFlagsAreBits) {
  EXPECT_EQ(UmDriver::kInitialised, 1);
  EXPECT_EQ(UmDriver::kEnded, 2);
  EXPECT_EQ(UmDriver::kAborted, 4);
  EXPECT_EQ(UmDriver::kWriteFailed, 8);
}

TEST_F(UmDriverTest, TheMutexIsTheMachines) {
  for (const harness::WindowsRelease& release : harness::kEveryWindows) {
    pretend(release);
    const std::wstring expected = release.major >= 5 ? L"Global\\umdriver" : L"umdriver";
    EXPECT_EQ(mutexesMadeBy([] { const UmDriver job; }), std::vector<std::wstring>{expected}) << release;
  }
}

TEST_F(UmDriverTest, InitReadsWhatTheSpoolerKnows) {
  const DWORD id = printer.beginDocument(L"Report");
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), id, nullptr));
  EXPECT_EQ(job.stateFlags(), 1U);
  EXPECT_EQ(job.jobId(), id);
  EXPECT_EQ(job.documentName(), L"Report");
  EXPECT_EQ(job.settings().naming().effectiveName(), printer.name());
}

TEST_F(UmDriverTest, InitReadsTheUserName) {
  wchar_t name[260] = {};
  DWORD length = 260;
  ASSERT_TRUE(GetUserNameW(name, &length));
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_EQ(job.userName(), name);
}

TEST_F(UmDriverTest, AnUnknownUserHasTheEmptyName) {
  imports.replace("GetUserNameW", [](LPWSTR, LPDWORD) -> BOOL { return FALSE; });
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_EQ(job.userName(), L"");
}

TEST_F(UmDriverTest, LongDocumentNamesAreCutTo259Characters) {
  UmDriver2k job;
  ASSERT_TRUE(job.init(printer.handle(), 1, std::wstring(300, L'd').c_str()));
  EXPECT_EQ(job.documentName(), std::wstring(259, L'd'));
}

TEST_F(UmDriverTest, BytesWrittenGrowsWithEachBlock) {
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_TRUE(job.write(bytes("abc")));
  EXPECT_EQ(job.bytesWritten(), 3U);
  EXPECT_TRUE(job.write(bytes("")));
  EXPECT_TRUE(job.write(bytes("defg")));
  EXPECT_EQ(job.bytesWritten(), 7U);
  EXPECT_EQ(job.outputPath(), outputFile());
}

TEST_F(UmDriverTest, AFailedBlockDoesNotCount) {
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_TRUE(job.write(bytes("abc")));
  imports.replace("WriteFile", [](HANDLE, LPCVOID, DWORD size, LPDWORD written, LPOVERLAPPED) -> BOOL {
    *written = size - 1;
    return TRUE;
  });
  EXPECT_FALSE(job.write(bytes("defg")));
  EXPECT_EQ(job.bytesWritten(), 3U);
}

TEST_F(UmDriverTest, PassedThroughBlocksDoNotCount) {
  settings.setNumber(L"passthru", 1);
  imports.replace("WritePrinter", [](HANDLE, LPVOID, DWORD size, LPDWORD written) -> BOOL {
    *written = size;
    return TRUE;
  });
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_TRUE(job.write(bytes("abc")));
  EXPECT_EQ(job.bytesWritten(), 0U);
  EXPECT_FALSE(harness::fileExists(outputFile()));
}

TEST_F(UmDriverTest, TheEndResetsTheJob) {
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), printer.beginDocument(L"Report"), nullptr));
  EXPECT_TRUE(job.write(bytes("abc")));
  job.setStateFlag(UmDriver::kAborted);
  EXPECT_TRUE(job.endDoc());
  EXPECT_EQ(job.stateFlags(), 2U);
  expectReset(job);
}

TEST_F(UmDriverTest, SoDoesTheEndOfAnEmptyJobAndOfAPassedOne) {
  UmDriver empty;
  ASSERT_TRUE(empty.init(printer.handle(), printer.beginDocument(L"Report"), nullptr));
  EXPECT_TRUE(empty.endDoc());
  EXPECT_EQ(empty.stateFlags(), 2U);
  expectReset(empty);
  EXPECT_TRUE(controls.empty());

  settings.setNumber(L"passthru", 1);
  UmDriver passed;
  ASSERT_TRUE(passed.init(printer.handle(), 1, nullptr));
  EXPECT_TRUE(passed.endDoc());
  EXPECT_EQ(passed.stateFlags(), 2U);
  expectReset(passed);
  EXPECT_TRUE(controls.empty());
}

TEST_F(UmDriverTest, TheEndLeavesDoPrintAlone) {
  UmDriver job;
  ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_TRUE(job.write(bytes("abc")));
  EXPECT_TRUE(job.endDoc());
  EXPECT_EQ(settings.number(L"DoPrint"), std::nullopt);
}

TEST_F(UmDriverTest, EveryResetEmptiesTheConvertersList) {
  const auto fill = [] { PdfObjectList::ofProcess().create(PdfObjectKind::kImage, "Im"); };
  const auto count = [] { return PdfObjectList::ofProcess().count(); };
  fill();
  ASSERT_EQ(count(), 1U);
  {
    UmDriver job;
    EXPECT_EQ(count(), 0U);
    ASSERT_TRUE(job.init(printer.handle(), 0, nullptr));
    fill();
    EXPECT_TRUE(job.write(bytes("abc")));
    EXPECT_EQ(count(), 1U);
    EXPECT_TRUE(job.endDoc());
    EXPECT_EQ(count(), 0U);
    fill();
  }
  EXPECT_EQ(count(), 0U);
}

TEST_F(UmDriverTest, EveryWayOutGivesTheMutexBack) {
  // A mutex lets its own thread pass, so it is asked whether there is something to give back.
  const auto isFree = [] {
    const KernelHandle mutex(OpenMutexW(MUTEX_ALL_ACCESS, FALSE, L"Global\\umdriver"));
    EXPECT_TRUE(mutex);
    return ReleaseMutex(mutex.get()) == FALSE;
  };
  UmDriver job;
  EXPECT_FALSE(job.init(nullptr, 0, nullptr));
  EXPECT_TRUE(isFree());
  EXPECT_FALSE(job.init(nullptr, 0, L"no such printer"));
  EXPECT_TRUE(isFree());
  EXPECT_FALSE(job.init(reinterpret_cast<HANDLE>(0x1234), 0, nullptr));
  EXPECT_TRUE(isFree());
  EXPECT_EQ(takeBoxes().size(), 3U);
  EXPECT_TRUE(job.init(printer.handle(), 0, nullptr));
  EXPECT_TRUE(isFree());
  EXPECT_TRUE(job.write(bytes("abc")));
  EXPECT_TRUE(isFree());
  imports.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) -> BOOL { return FALSE; });
  EXPECT_FALSE(job.write(bytes("abc")));
  EXPECT_TRUE(isFree());
  EXPECT_TRUE(job.endDoc());
  EXPECT_TRUE(isFree());
}

TEST_F(UmDriverTest, ANewerJobFailsWithoutThePrintersName) {
  UmDriver2k job;
  EXPECT_FALSE(job.init(nullptr, 1, L"Report"));
  EXPECT_EQ(takeBoxes(), std::vector<std::wstring>{L"[Error] umpd - Could not retrieve printer info"});
  EXPECT_EQ(job.stateFlags() & UmDriver::kInitialised, 0U);
}

TEST_F(UmDriverTest, ANewerJobTakesItsDocumentsNameAsGiven) {
  UmDriver2k job;
  ASSERT_TRUE(job.init(printer.handle(), printer.beginDocument(L"The spooler's"), L"The caller's"));
  EXPECT_EQ(job.documentName(), L"The caller's");
  UmDriver2k nameless;
  ASSERT_TRUE(nameless.init(printer.handle(), 1, nullptr));
  EXPECT_EQ(nameless.documentName(), L"");
}

}  // namespace
}  // namespace quillpress::driver
