// The exact names and rights of the objects that the library shares with other processes.

#include "tests/umpd/kernel/KernelTest.h"

namespace quillpress::harness {
namespace {

constexpr DWORD kAllOfEvent = 0x1F0003;
constexpr DWORD kAllOfSection = 0xF001F;

class ObjectNamesTest : public KernelByReleaseTest {
 protected:
  // Opened, and always with these rights and for this process alone.
  void expectOpened(ObjectKind kind, const std::wstring& name, DWORD access) {
    const auto openings = calls.openingsOf(name);
    EXPECT_FALSE(openings.empty()) << ::testing::PrintToString(name);
    for (const KernelCalls::Opening& opening : openings) {
      EXPECT_EQ(opening.kind, kind);
      EXPECT_EQ(opening.access, access);
      EXPECT_FALSE(opening.isInherited);
    }
  }
};

TEST_P(ObjectNamesTest, TheJobMutexIsMadeUnownedForEachJob) {
  { const Job job(library, printer); }
  { const Job job(library, printer.name()); }
  const auto creations = calls.creationsOf(jobMutex);
  ASSERT_EQ(creations.size(), 2U);
  for (const KernelCalls::Creation& creation : creations) {
    EXPECT_EQ(creation.kind, ObjectKind::kMutex);
    EXPECT_FALSE(creation.isOwned);
  }
}

TEST_P(ObjectNamesTest, TheLaunchersMutexIsOpenedWithFullAccess) {
  printToLauncher(releaseChannel);
  expectOpened(ObjectKind::kMutex, releaseChannel.mutex(), kAllOfMutex);
  EXPECT_TRUE(calls.creationsOf(releaseChannel.mutex()).empty());
}

TEST_P(ObjectNamesTest, TheRequestEventIsOpenedWithFullAccess) {
  printToLauncher(releaseChannel);
  expectOpened(ObjectKind::kEvent, releaseChannel.requestEvent(), kAllOfEvent);
  EXPECT_TRUE(calls.creationsOf(releaseChannel.requestEvent()).empty());
}

TEST_P(ObjectNamesTest, TheAcknowledgeEventIsMadeForEachMessage) {
  printToLauncher(releaseChannel);
  const auto creations = calls.creationsOf(releaseChannel.acknowledgeEvent());
  ASSERT_EQ(creations.size(), 2U);
  for (const KernelCalls::Creation& creation : creations) {
    EXPECT_EQ(creation.kind, ObjectKind::kEvent);
    EXPECT_FALSE(creation.isManual);
    EXPECT_FALSE(creation.isSignalled);
  }
}

TEST_P(ObjectNamesTest, TheLaunchersMemoryIsMadeOfThePagingFile) {
  printToLauncher(releaseChannel);
  expectOpened(ObjectKind::kSection, releaseChannel.memory(), kAllOfSection);
  const auto creations = calls.creationsOf(releaseChannel.memory());
  ASSERT_FALSE(creations.empty());
  for (const KernelCalls::Creation& creation : creations) {
    EXPECT_EQ(creation.kind, ObjectKind::kSection);
    EXPECT_EQ(creation.file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(creation.protection, static_cast<DWORD>(PAGE_READWRITE));
    EXPECT_EQ(creation.size, 1303U);
  }
}

TEST_P(ObjectNamesTest, TheLaunchersMemoryIsNotMadeWhenItIsThere) {
  const Peer peer(releaseChannel);
  print(L"Document");
  expectOpened(ObjectKind::kSection, releaseChannel.memory(), kAllOfSection);
  EXPECT_TRUE(calls.creationsOf(releaseChannel.memory()).empty());
}

TEST_P(ObjectNamesTest, TheEventOfAFinishedPrintIsOpenedWithFullAccess) {
  settings.setNumber(L"FinishPrintEv", 1);
  const std::wstring name = sessionPrefix() + L"FinishPrintEv";
  const Handle event(CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
  print(L"Document");
  expectOpened(ObjectKind::kEvent, name, kAllOfEvent);
  EXPECT_TRUE(calls.creationsOf(name).empty());
  EXPECT_EQ(WaitForSingleObject(event.get(), 0), WAIT_OBJECT_0);
}

TEST_P(ObjectNamesTest, TheControllersMemoryIsMadeOfThePagingFile) {
  lookForController();
  if (GetParam().is9x()) {
    EXPECT_TRUE(calls.openingsOf(controllerCache).empty());
    EXPECT_TRUE(calls.creationsOf(controllerCache).empty());
    return;
  }
  expectOpened(ObjectKind::kSection, controllerCache, kAllOfSection);
  const auto creations = calls.creationsOf(controllerCache);
  ASSERT_EQ(creations.size(), 1U);
  EXPECT_EQ(creations[0].kind, ObjectKind::kSection);
  EXPECT_EQ(creations[0].file, INVALID_HANDLE_VALUE);
  EXPECT_EQ(creations[0].protection, static_cast<DWORD>(PAGE_READWRITE));
  EXPECT_EQ(creations[0].size, 522U);
}

TEST_P(ObjectNamesTest, NoOtherObjectIsMade) {
  printToLauncher(releaseChannel);
  lookForController();
  for (const KernelCalls::Creation& creation : calls.creations()) {
    EXPECT_TRUE(creation.name == jobMutex || creation.name == releaseChannel.acknowledgeEvent() ||
                creation.name == releaseChannel.memory() || creation.name == controllerCache)
        << ::testing::PrintToString(creation.name);
  }
}

INSTANTIATE_TEST_SUITE_P(Releases, ObjectNamesTest, ::testing::ValuesIn(kEveryWindows),
                         ::testing::PrintToStringParamName());

class EventTest : public KernelTest {};

TEST_F(EventTest, SetEventsStaySetUntilSomebodyWaits) {
  // A pulse would be lost on a listener that is busy.
  library.replace("ResetEvent", [](HANDLE event) -> BOOL {
    ADD_FAILURE() << "an event is reset";
    return ::ResetEvent(event);
  });
  printToLauncher(channel);
  settings.setNumber(L"FinishPrintEv", 1);
  const Handle event(CreateEventW(nullptr, FALSE, FALSE, L"Local\\FinishPrintEv"));
  print(L"Another");
  EXPECT_EQ(WaitForSingleObject(event.get(), 0), WAIT_OBJECT_0);
}

TEST_F(EventTest, AnEventThatNobodyMadeIsNotNeeded) {
  settings.setNumber(L"FinishPrintEv", 1);
  print(L"Document");
  EXPECT_FALSE(calls.openingsOf(L"Local\\FinishPrintEv").empty());
  EXPECT_TRUE(calls.creationsOf(L"Local\\FinishPrintEv").empty());
}

}  // namespace
}  // namespace quillpress::harness
