#include "tests/umpd/launcher/support/Thread.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/win32/NamedObjects.h"

namespace quillpress::driver {
namespace {

class NamedEventTest : public classes::ClassTest {
 protected:
  // The event as another program has it.
  [[nodiscard]] KernelHandle makeByOthers(bool signalled) const {
    return KernelHandle(CreateEventW(nullptr, FALSE, signalled ? TRUE : FALSE, name.c_str()));
  }

  [[nodiscard]] bool isThere() const {
    return static_cast<bool>(KernelHandle(OpenEventW(SYNCHRONIZE, FALSE, name.c_str())));
  }

  const std::wstring name = classes::newObjectName();
};

TEST_F(NamedEventTest, IsMadeNotSignalled) {
  NamedEvent event(name);
  EXPECT_FALSE(isThere());
  ASSERT_TRUE(event.create());
  EXPECT_TRUE(isThere());
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(NamedEventTest, GoesWithItsLastOwner) {
  {
    NamedEvent event(name);
    ASSERT_TRUE(event.create());
  }
  EXPECT_FALSE(isThere());
}

TEST_F(NamedEventTest, OneThatExistsIsTakenAsItIs) {
  const KernelHandle others = makeByOthers(true);
  NamedEvent event(name);
  ASSERT_TRUE(event.create());
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_OBJECT_0));
}

TEST_F(NamedEventTest, ByItselfItIsResetByTheFirstWait) {
  NamedEvent event(name);
  ASSERT_TRUE(event.create());
  EXPECT_TRUE(event.set());
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_OBJECT_0));
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(NamedEventTest, WithManualResetSettingIsAPulse) {
  NamedEvent event(name, NamedEvent::Reset::kManual);
  ASSERT_TRUE(event.create());
  DWORD result = WAIT_FAILED;
  const harness::Thread waiting([&] {
    const KernelHandle others(OpenEventW(SYNCHRONIZE, FALSE, name.c_str()));
    result = WaitForSingleObject(others.get(), 30'000);
  });
  // Only who waits already sees it; when that is nobody knows.
  for (int i = 0; i < 1000 && !waiting.endsWithin(10); ++i) EXPECT_TRUE(event.set());
  ASSERT_TRUE(waiting.endsWithin(30'000));
  EXPECT_EQ(result, static_cast<DWORD>(WAIT_OBJECT_0));
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(NamedEventTest, TheKindOfResetIsThatOfItsCreation) {
  std::vector<BOOL> manual;
  auto* const make = classes::real<decltype(CreateEventW)>(L"kernel32.dll", "CreateEventW");
  imports.replace("CreateEventW",
                  [&](LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL initial, LPCWSTR objectName) {
                    manual.push_back(manualReset);
                    EXPECT_EQ(initial, FALSE);
                    EXPECT_NE(security, nullptr);
                    return make(security, manualReset, initial, objectName);
                  });
  NamedEvent automatic(name);
  NamedEvent byHand(classes::newObjectName(), NamedEvent::Reset::kManual);
  EXPECT_TRUE(automatic.create());
  EXPECT_TRUE(byHand.create());
  EXPECT_EQ(manual, (std::vector<BOOL>{FALSE, TRUE}));
}

TEST_F(NamedEventTest, IsOpenedWithFullAccess) {
  const KernelHandle others = makeByOthers(false);
  auto* const open = classes::real<decltype(OpenEventW)>(L"kernel32.dll", "OpenEventW");
  int count = 0;
  imports.replace("OpenEventW", [&](DWORD access, BOOL inherit, LPCWSTR objectName) -> HANDLE {
    ++count;
    EXPECT_EQ(access, static_cast<DWORD>(0x1F0003));
    EXPECT_EQ(inherit, FALSE);
    EXPECT_EQ(objectName, name);
    return open(access, inherit, objectName);
  });
  NamedEvent event(name);
  EXPECT_TRUE(event.open());
  EXPECT_TRUE(event.set());
  EXPECT_EQ(count, 1);
}

TEST_F(NamedEventTest, SettingOpensItIfNeeded) {
  const KernelHandle others = makeByOthers(false);
  NamedEvent event(name);
  EXPECT_TRUE(event.set());
  EXPECT_EQ(WaitForSingleObject(others.get(), 0), static_cast<DWORD>(WAIT_OBJECT_0));
}

TEST_F(NamedEventTest, WaitingOpensItIfNeeded) {
  const KernelHandle others = makeByOthers(true);
  NamedEvent event(name);
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_OBJECT_0));
  EXPECT_EQ(WaitForSingleObject(others.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(NamedEventTest, OneThatIsNotThereCannotBeUsed) {
  NamedEvent event(name);
  EXPECT_FALSE(event.open());
  EXPECT_FALSE(event.set());
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(-1));
  EXPECT_FALSE(isThere());
}

TEST_F(NamedEventTest, IsLookedForAgainAfterAFailure) {
  NamedEvent event(name);
  EXPECT_FALSE(event.open());
  const KernelHandle others = makeByOthers(true);
  EXPECT_EQ(event.wait(0), static_cast<DWORD>(WAIT_OBJECT_0));
}

TEST_F(NamedEventTest, AnotherKindOfObjectIsNoEvent) {
  const KernelHandle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
  NamedEvent event(name);
  EXPECT_FALSE(event.create());
  EXPECT_EQ(event.wait(0), NamedEvent::kNotOpen);
}

TEST_F(NamedEventTest, WaitsForTheGivenTime) {
  NamedEvent event(name);
  ASSERT_TRUE(event.create());
  const DWORD start = GetTickCount();
  EXPECT_EQ(event.wait(200), static_cast<DWORD>(WAIT_TIMEOUT));
  EXPECT_GE(GetTickCount() - start, 150U);
}

TEST_F(NamedEventTest, AFailedSetIsTold) {
  NamedEvent event(name);
  ASSERT_TRUE(event.create());
  imports.replace("SetEvent", [](HANDLE) -> BOOL { return FALSE; });
  EXPECT_FALSE(event.set());
}

}  // namespace
}  // namespace quillpress::driver
