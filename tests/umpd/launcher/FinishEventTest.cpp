// The other way to hand a file over: a program that waits for the event "FinishPrintEv" and reads the
// settings.

#include "tests/umpd/harness/WindowsRelease.h"
#include "tests/umpd/launcher/support/HandOverTest.h"
#include "tests/umpd/launcher/support/ObjectCalls.h"

namespace quillpress::harness {
namespace {

class FinishEventTest : public HandOverTest {
 protected:
  FinishEventTest() { settings.setNumber(L"FinishPrintEv", 1); }

  static Handle finishEvent() { return Handle(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv")); }
  static bool isSignalled(const Handle& event) {
    return WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0;
  }
};

TEST_F(FinishEventTest, NoLauncherIsNeeded) {
  library.replace("CreateProcessW",
                  [](LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                     LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION) -> BOOL {
                    ADD_FAILURE() << "a program is started";
                    return FALSE;
                  });
  library.replace("Sleep", [](DWORD) { ADD_FAILURE() << "there is a pause"; });
  print(L"Document");
  EXPECT_EQ(readFile(folder.file(L"Document.pdf")), "%!PS");
}

TEST_F(FinishEventTest, ALauncherThatListensIsToldNothing) {
  ObjectCalls calls(library);
  const Peer peer(channel);
  print(L"Document");
  EXPECT_TRUE(peer.records().empty());
  EXPECT_TRUE(calls.namesFor("OpenFileMappingW").empty());
}

TEST_F(FinishEventTest, EvenWhenTheStatusWindowIsAskedFor) {
  settings.setNumber(L"showPrintStatusWin", 1);
  const Peer peer(channel);
  print(L"Document");
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(FinishEventTest, NameAndFileAreInTheSettingsWhenTheEventComes) {
  const Handle event = finishEvent();
  Job job(library, printer, L"a+b%41", 1);
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_FALSE(isSignalled(event));
  EXPECT_EQ(settings.text(L"DocName"), std::nullopt);
  std::optional<std::wstring> name;
  std::optional<std::wstring> file;
  const Thread waiting([&] {
    WaitForSingleObject(event.get(), INFINITE);
    name = settings.text(L"DocName");
    file = settings.text(L"lastfile");
  });
  EXPECT_EQ(job.end(), 1);
  ASSERT_TRUE(waiting.endsWithin(10000));
  EXPECT_EQ(name, L"a bA");
  EXPECT_EQ(file, folder.file(L"a_bA.pdf"));
}

TEST_F(FinishEventTest, TheEventIsSetOnceAJob) {
  const Handle event = finishEvent();
  print(L"Document");
  EXPECT_TRUE(isSignalled(event));
  EXPECT_FALSE(isSignalled(event));
  print(L"Document");
  EXPECT_TRUE(isSignalled(event));
}

TEST_F(FinishEventTest, AnEventThatNobodyHasMadeIsNotMade) {
  print(L"Document");
  const Handle event(OpenEventW(SYNCHRONIZE, FALSE, L"Local\\FinishPrintEv"));
  EXPECT_FALSE(event);
  EXPECT_EQ(settings.text(L"lastfile"), folder.file(L"Document.pdf"));
}

TEST_F(FinishEventTest, AJobWithoutAByteSetsNothing) {
  const Handle event = finishEvent();
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_FALSE(isSignalled(event));
  EXPECT_EQ(settings.text(L"lastfile"), std::nullopt);
}

class FinishEventByReleaseTest : public FinishEventTest,
                                 public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(FinishEventByReleaseTest, ItsNameBeginsWithTheSessionWhereThereAreSessions) {
  pretend(library, GetParam());
  std::vector<std::wstring> names;
  library.replace("OpenEventW", [&](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    names.emplace_back(name);
    return ::OpenEventW(access, inherit, name);
  });
  print(L"Document");
  const std::wstring expected = GetParam().major >= 5 ? L"Local\\FinishPrintEv" : L"FinishPrintEv";
  EXPECT_EQ(names, std::vector<std::wstring>{expected});
}

INSTANTIATE_TEST_SUITE_P(All, FinishEventByReleaseTest, ::testing::ValuesIn(kEveryWindows),
                         ::testing::PrintToStringParamName());

}  // namespace
}  // namespace quillpress::harness
