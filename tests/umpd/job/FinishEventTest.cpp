// How a program learns that a document is finished when it waits for the event "FinishPrintEv".

#include <string>
#include <vector>

#include "tests/umpd/job/JobTest.h"
#include "tests/umpd/launcher/support/Thread.h"

namespace quillpress::harness {
namespace {

class FinishEventTest : public JobTest {
 protected:
  [[nodiscard]] static bool isSignalled(const Handle& event) {
    return WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0;
  }

  const Handle finished{CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv")};
};

TEST_F(FinishEventTest, IsSetAtTheEndAndNotBefore) {
  Job job(library, printer);
  EXPECT_EQ(job.write("x"), 1);
  EXPECT_FALSE(isSignalled(finished));
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(isSignalled(finished));
}

TEST_F(FinishEventTest, WakesWhoWaits) {
  const Thread waiter([this] { EXPECT_EQ(WaitForSingleObject(finished.get(), 20000), WAIT_OBJECT_0); });
  EXPECT_FALSE(waiter.endsWithin(100));
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(waiter.endsWithin(20000));
}

TEST_F(FinishEventTest, LetsOneWaiterPass) {
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(isSignalled(finished));
  EXPECT_FALSE(isSignalled(finished));
}

TEST_F(FinishEventTest, FindsNameAndPathStored) {
  Job job(library, printer, L"My+Document");
  job.write("x");
  bool isStored = false;
  library.replace("SetEvent", [&](HANDLE event) -> BOOL {
    isStored = lastName() == L"My Document" && lastFile() == folder.file(L"My_Document.pdf");
    return ::SetEvent(event);
  });
  job.end();
  EXPECT_TRUE(isStored);
}

TEST_F(FinishEventTest, ValuesAreTextsWithTheirFinalZero) {
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(settings.type(L"DocName"), static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(settings.type(L"lastfile"), static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(settings.bytes(L"DocName")->size(), sizeof L"Document");
  EXPECT_EQ(settings.bytes(L"lastfile")->size(), (folder.file(L"Document.pdf").size() + 1) * sizeof(wchar_t));
}

TEST_F(FinishEventTest, AnyOtherNumberThanZeroAsksForIt) {
  settings.setNumber(L"FinishPrintEv", 2);
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_TRUE(isSignalled(finished));
}

TEST_F(FinishEventTest, MayBeMissing) {
  FAIL_EVERY(library, OpenEventW, nullptr, ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(print(L"Document"), 1);
  EXPECT_EQ(lastFile(), folder.file(L"Document.pdf"));
}

TEST_F(FinishEventTest, IsSetWhenTheValuesCannotBeStored) {
  Job job(library, printer);
  job.write("x");
  library.replace("RegSetValueExW", [](HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD) -> LONG {
    return ERROR_ACCESS_DENIED;
  });
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(isSignalled(finished));
}

class FinishEventNameTest : public FinishEventTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  FinishEventNameTest() { pretend(library, GetParam()); }

  // What the library opens at the end of a document.
  std::vector<std::wstring> namesOpened() {
    std::vector<std::wstring> names;
    DWORD wanted = 0;
    library.replace("OpenEventW", [&](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
      names.emplace_back(name);
      wanted = access;
      return ::OpenEventW(access, inherit, name);
    });
    EXPECT_EQ(print(L"Document"), 1);
    EXPECT_EQ(wanted, static_cast<DWORD>(EVENT_ALL_ACCESS));
    return names;
  }
};

TEST_P(FinishEventNameTest, FollowsTheRelease) {
  const bool hasNamespaces = GetParam().major >= 5;
  EXPECT_EQ(namesOpened(),
            std::vector<std::wstring>{hasNamespaces ? L"Local\\FinishPrintEv" : L"FinishPrintEv"});
}

TEST_P(FinishEventNameTest, BelongsToAJobWithAFile) {
  const std::vector<std::wstring> names = namesOpened();
  EXPECT_TRUE(isSignalled(finished));
  EXPECT_EQ(readFile(folder.file(L"Document.pdf")), "%!PS");
}

INSTANTIATE_TEST_SUITE_P(Releases, FinishEventNameTest, ::testing::ValuesIn(kEveryWindows));

}  // namespace
}  // namespace quillpress::harness
