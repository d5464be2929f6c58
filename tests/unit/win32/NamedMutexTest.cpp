#include "tests/umpd/launcher/support/Thread.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/win32/NamedObjects.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {

class NamedMutexTest : public classes::ClassTest {
 protected:
  [[nodiscard]] KernelHandle makeByOthers() const {
    return KernelHandle(CreateMutexW(nullptr, FALSE, name.c_str()));
  }

  // What another thread finds that would like to have the mutex at once: WAIT_OBJECT_0 when it is free.
  [[nodiscard]] DWORD triedByOthers() const {
    return harness::onAnotherThread<DWORD>([&] {
      const KernelHandle others(OpenMutexW(SYNCHRONIZE, FALSE, name.c_str()));
      const DWORD result = WaitForSingleObject(others.get(), 0);
      if (result != WAIT_TIMEOUT) ReleaseMutex(others.get());
      return result;
    });
  }

  // Creation fails with this error until the end of the test.
  void failCreation(DWORD error) {
    imports.replace("CreateMutexW", [error](LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR) -> HANDLE {
      SetLastError(error);
      return nullptr;
    });
  }

  static constexpr DWORD kFree = WAIT_OBJECT_0;
  static constexpr DWORD kTaken = WAIT_TIMEOUT;

  const std::wstring name = classes::newObjectName();
};

TEST_F(NamedMutexTest, IsMadeWithoutOwner) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  EXPECT_EQ(triedByOthers(), kFree);
}

TEST_F(NamedMutexTest, OrWithTheCallerAsOwner) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create(NamedMutex::InitialOwner::kCaller));
  EXPECT_EQ(triedByOthers(), kTaken);
}

TEST_F(NamedMutexTest, ExistsAsLongAsSomebodyHasItOpen) {
  EXPECT_FALSE(NamedMutex::exists(name));
  {
    const KernelHandle others = makeByOthers();
    EXPECT_TRUE(NamedMutex::exists(name));
    EXPECT_TRUE(NamedMutex::exists(name));
  }
  EXPECT_FALSE(NamedMutex::exists(name));
}

TEST_F(NamedMutexTest, BelongsToALockUntilItsEnd) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  {
    const NamedMutex::Lock lock(mutex);
    EXPECT_TRUE(lock);
    EXPECT_EQ(triedByOthers(), kTaken);
  }
  EXPECT_EQ(triedByOthers(), kFree);
}

TEST_F(NamedMutexTest, IsReleasedWhenAnExceptionLeavesTheScope) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  try {
    const NamedMutex::Lock lock(mutex);
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(triedByOthers(), kFree);
}

TEST_F(NamedMutexTest, IsReleasedOnceForEachLock) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  {
    const NamedMutex::Lock outer(mutex);
    {
      const NamedMutex::Lock inner(mutex);
      EXPECT_TRUE(inner);
    }
    EXPECT_EQ(triedByOthers(), kTaken);
  }
  EXPECT_EQ(triedByOthers(), kFree);
}

TEST_F(NamedMutexTest, ALockWaitsForItsTurn) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create(NamedMutex::InitialOwner::kCaller));
  const KernelHandle own(OpenMutexW(MUTEX_ALL_ACCESS, FALSE, name.c_str()));
  bool isLocked = false;
  const harness::Thread other([&] {
    const NamedMutex::Lock lock(mutex);
    isLocked = static_cast<bool>(lock);
  });
  EXPECT_FALSE(other.endsWithin(200));
  ReleaseMutex(own.get());
  EXPECT_TRUE(other.endsWithin(30'000));
  EXPECT_TRUE(isLocked);
}

TEST_F(NamedMutexTest, LocksWaitWithoutLimit) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  auto* const wait = classes::real<decltype(WaitForSingleObject)>(L"kernel32.dll", "WaitForSingleObject");
  std::vector<DWORD> limits;
  imports.replace("WaitForSingleObject", [&](HANDLE handle, DWORD milliseconds) -> DWORD {
    limits.push_back(milliseconds);
    return wait(handle, milliseconds);
  });
  { const NamedMutex::Lock lock(mutex); }
  EXPECT_EQ(limits, std::vector<DWORD>{INFINITE});
}

TEST_F(NamedMutexTest, OneWhoseOwnerHasDiedCountsAsTaken) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  harness::onAnotherThread<DWORD>([&] {
    const KernelHandle others(OpenMutexW(MUTEX_ALL_ACCESS, FALSE, name.c_str()));
    return WaitForSingleObject(others.get(), INFINITE);
  });
  {
    const NamedMutex::Lock lock(mutex);
    EXPECT_TRUE(lock);
    EXPECT_EQ(triedByOthers(), kTaken);
  }
  EXPECT_EQ(triedByOthers(), kFree);
}

TEST_F(NamedMutexTest, AFailedCreationIsToldToTheDebugger) {
  failCreation(ERROR_ACCESS_DENIED);
  NamedMutex mutex(name);
  EXPECT_FALSE(mutex.create());
  EXPECT_EQ(takeDebuggerOutput(), L"CreateMutex failed " + systemMessage(ERROR_ACCESS_DENIED));
}

TEST_F(NamedMutexTest, AfterAFailedCreationItIsOpenedByName) {
  const KernelHandle others = makeByOthers();
  failCreation(ERROR_ACCESS_DENIED);
  NamedMutex mutex(name);
  EXPECT_FALSE(mutex.create());
  auto* const open = classes::real<decltype(OpenMutexW)>(L"kernel32.dll", "OpenMutexW");
  std::vector<DWORD> accesses;
  imports.replace("OpenMutexW", [&](DWORD access, BOOL inherit, LPCWSTR objectName) -> HANDLE {
    accesses.push_back(access);
    EXPECT_EQ(inherit, FALSE);
    EXPECT_EQ(objectName, name);
    return open(access, inherit, objectName);
  });
  const NamedMutex::Lock lock(mutex);
  EXPECT_TRUE(lock);
  EXPECT_EQ(accesses, std::vector<DWORD>{0x1F0001});
  imports.restore("OpenMutexW");
  EXPECT_EQ(triedByOthers(), kTaken);
}

TEST_F(NamedMutexTest, OneThatCannotBeOpenedIsNeitherLockedNorReleased) {
  NamedMutex mutex(name);
  int releases = 0;
  imports.replace("ReleaseMutex", [&](HANDLE) -> BOOL { return ++releases; });
  {
    const NamedMutex::Lock lock(mutex);
    EXPECT_FALSE(lock);
  }
  EXPECT_EQ(releases, 0);
}

TEST_F(NamedMutexTest, AFailedWaitIsNoLock) {
  NamedMutex mutex(name);
  ASSERT_TRUE(mutex.create());
  int releases = 0;
  imports.replace("ReleaseMutex", [&](HANDLE) -> BOOL { return ++releases; });
  imports.replace("WaitForSingleObject", [](HANDLE, DWORD) -> DWORD { return WAIT_FAILED; });
  {
    const NamedMutex::Lock lock(mutex);
    EXPECT_FALSE(lock);
  }
  EXPECT_EQ(releases, 0);
}

TEST_F(NamedMutexTest, AnotherKindOfObjectIsNoMutex) {
  const KernelHandle event(CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
  NamedMutex mutex(name);
  EXPECT_FALSE(mutex.create());
  EXPECT_FALSE(NamedMutex::exists(name));
  EXPECT_TRUE(takeDebuggerOutput().starts_with(L"CreateMutex failed "));
  const NamedMutex::Lock lock(mutex);
  EXPECT_FALSE(lock);
}

TEST_F(NamedMutexTest, OneThatExistsKeepsItsOwner) {
  const KernelHandle others = makeByOthers();
  NamedMutex mutex(name);
  EXPECT_TRUE(mutex.create(NamedMutex::InitialOwner::kCaller));
  EXPECT_EQ(triedByOthers(), kFree);
}

}  // namespace
}  // namespace quillpress::driver
