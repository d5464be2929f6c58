// The domain controller that knows the user's account, and the memory in which the processes of a session
// share its name.

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

#include "tests/umpd/harness/DriverFolder.h"
#include "tests/umpd/spooler/AccountSystem.h"
#include "tests/umpd/spooler/ControllerCache.h"
#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kCacheName[] = L"DomainControllerData";

class DomainControllerTest : public SpoolerTest {
 protected:
  DomainControllerTest() {
    pretend(library, kWindowsNt4);
    byName.makeAbsent("RegOpenCurrentUser");
    byName.replace("NetGetDCName", [this](LPCWSTR server, LPCWSTR domain, LPBYTE* buffer) -> DWORD {
      EXPECT_EQ(server, nullptr);
      EXPECT_EQ(domain, nullptr);
      ++questions;
      stateWhileAsked = ControllerCache().state();
      if (!controller) return kNoController;
      *buffer = reinterpret_cast<LPBYTE>(controller->data());
      return 0;
    });
    byName.replace("NetApiBufferFree", [this](LPVOID buffer) -> DWORD {
      freed.push_back(buffer);
      return 0;
    });
    library.replace("Sleep", [this](DWORD milliseconds) {
      sleeps.push_back(milliseconds);
      clock += milliseconds;
      if (onSleep) onSleep();
    });
    library.replace("GetTickCount", [this]() -> DWORD { return clock; });
  }

  // Where a job looks its user up: an empty text is the local machine. All lookups must agree.
  std::wstring print() {
    const std::size_t before = accounts.lookups().size();
    const Job job(library, printer);
    EXPECT_NE(job.handle(), 0U);
    const auto& lookups = accounts.lookups();
    if (lookups.size() == before) {
      ADD_FAILURE() << "no account is looked up";
      return {};
    }
    for (std::size_t i = before; i < lookups.size(); ++i)
      EXPECT_EQ(lookups[i].system, lookups[before].system);
    return lookups[before].system;
  }

  static constexpr DWORD kNoController = 2453;  // NERR_DCNotFound

  std::optional<std::wstring> controller = L"\\\\PRIMARY";
  int questions = 0;
  char stateWhileAsked = '?';
  std::vector<void*> freed;
  std::vector<DWORD> sleeps;
  std::function<void()> onSleep;
  DWORD clock = 1000;
  AccountSystem accounts{library};
};

TEST_F(DomainControllerTest, IsAskedForTheAccount) {
  EXPECT_EQ(print(), L"\\\\PRIMARY");
}

TEST_F(DomainControllerTest, IsKeptInTheSharedMemory) {
  print();
  ASSERT_TRUE(ControllerCache::exists());
  const ControllerCache cache;
  EXPECT_EQ(cache.state(), 'r');
  EXPECT_EQ(cache.name(), L"\\\\PRIMARY");
}

TEST_F(DomainControllerTest, IsMarkedAsBeingWorkedOutWhileTheNetworkIsAsked) {
  print();
  EXPECT_EQ(stateWhileAsked, 'w');
}

TEST_F(DomainControllerTest, IsWorkedOutOnce) {
  EXPECT_EQ(print(), L"\\\\PRIMARY");
  controller = L"\\\\ANOTHER";
  EXPECT_EQ(print(), L"\\\\PRIMARY");
  EXPECT_EQ(questions, 1);
}

TEST_F(DomainControllerTest, TheNetworksBufferIsFreedOnce) {
  print();
  EXPECT_EQ(freed, std::vector<void*>{controller->data()});
}

TEST_F(DomainControllerTest, IsNeverWaitedForWhenNobodyWorksItOut) {
  print();
  EXPECT_TRUE(sleeps.empty());
}

TEST_F(DomainControllerTest, WhatAnotherProcessFoundIsTaken) {
  ControllerCache cache;
  cache.setName(L"\\\\FOUND");
  cache.setState('r');
  EXPECT_EQ(print(), L"\\\\FOUND");
  EXPECT_EQ(questions, 0);
}

TEST_F(DomainControllerTest, ThatAnotherProcessFoundNoneIsTakenToo) {
  ControllerCache cache;
  cache.setState('r');
  EXPECT_EQ(print(), L"");
  EXPECT_EQ(questions, 0);
}

TEST_F(DomainControllerTest, AnyOtherStateMeansThatItIsNotKnown) {
  for (const char state : {'\0', 'x', 'R', 'W', '\xFF'}) {
    ControllerCache cache;
    cache.setName(L"\\\\STALE");
    cache.setState(state);
    EXPECT_EQ(print(), L"\\\\PRIMARY") << int{state};
    EXPECT_EQ(cache.state(), 'r');
    EXPECT_EQ(cache.name(), L"\\\\PRIMARY");
  }
  EXPECT_EQ(questions, 5);
}

TEST_F(DomainControllerTest, TheReservedByteIsNeverWritten) {
  ControllerCache cache;
  cache.setReserved('\x5A');
  print();
  EXPECT_EQ(cache.reserved(), '\x5A');
}

TEST_F(DomainControllerTest, WithoutOneTheAccountIsLookedUpOnTheLocalMachine) {
  controller.reset();
  EXPECT_EQ(print(), L"");
  const ControllerCache cache;
  EXPECT_EQ(cache.state(), 'r');
  EXPECT_EQ(cache.name(), L"");
  EXPECT_TRUE(freed.empty());
}

TEST_F(DomainControllerTest, WithoutOneAStaleNameIsForgotten) {
  controller.reset();
  ControllerCache cache;
  cache.setName(L"\\\\STALE");
  EXPECT_EQ(print(), L"");
  EXPECT_EQ(cache.name(), L"");
}

TEST_F(DomainControllerTest, WithoutOneTheNetworkIsNotAskedAgain) {
  controller.reset();
  print();
  print();
  EXPECT_EQ(questions, 1);
}

TEST_F(DomainControllerTest, OnAMachineWithoutADomainThereIsNone) {
  // What the system itself answers.
  const HMODULE network = ::LoadLibraryW(L"netapi32.dll");
  ASSERT_NE(network, nullptr);
  using Ask = DWORD WINAPI(LPCWSTR, LPCWSTR, LPBYTE*);
  auto* const ask =
      reinterpret_cast<Ask*>(reinterpret_cast<void*>(::GetProcAddress(network, "NetGetDCName")));
  byName.replace("NetGetDCName", ask);
  EXPECT_EQ(print(), L"");
  EXPECT_EQ(ControllerCache().state(), 'r');
  ::FreeLibrary(network);
}

class MissingFunctionTest : public DomainControllerTest {
 protected:
  void expectNotKnown() {
    EXPECT_EQ(print(), L"");
    EXPECT_EQ(questions, 0);
    ASSERT_TRUE(ControllerCache::exists());
    EXPECT_EQ(ControllerCache().state(), '\0');
  }
};

TEST_F(MissingFunctionTest, WithoutTheQuestionTheStateIsZero) {
  byName.makeAbsent("NetGetDCName");
  expectNotKnown();
}

TEST_F(MissingFunctionTest, WithoutTheFreeingTheStateIsZero) {
  byName.makeAbsent("NetApiBufferFree");
  expectNotKnown();
}

TEST_F(MissingFunctionTest, WithoutTheLibraryTheStateIsZero) {
  byName.makeMissing(L"netapi32.dll");
  expectNotKnown();
}

TEST_F(MissingFunctionTest, TheFunctionsAreLookedForAgain) {
  byName.makeAbsent("NetApiBufferFree");
  print();
  byName.replace("NetApiBufferFree", [](LPVOID) -> DWORD { return 0; });
  EXPECT_EQ(print(), L"\\\\PRIMARY");
}

TEST_F(MissingFunctionTest, TheFunctionsAreThoseOfNetapi32) {
  print();
  const auto& loaded = byName.librariesLoaded();
  EXPECT_TRUE(std::any_of(loaded.begin(), loaded.end(), [](const std::wstring& path) {
    return path.size() >= 12 && _wcsicmp(path.c_str() + path.size() - 12, L"Netapi32.dll") == 0;
  }));
}

TEST_F(DomainControllerTest, ANameOf259CharactersIsKeptWhole) {
  controller = std::wstring(259, L'c');
  EXPECT_EQ(print(), *controller);
  EXPECT_EQ(ControllerCache().name(), *controller);
}

TEST_F(DomainControllerTest, ALongerNameIsCutAndEnds) {
  for (const std::size_t length : {260U, 261U, 1000U}) {
    ControllerCache cache;
    cache.setState('\0');
    controller = std::wstring(length, L'c');
    EXPECT_EQ(print(), std::wstring(259, L'c'));
    EXPECT_EQ(cache.nameField().back(), L'\0');
  }
}

TEST_F(DomainControllerTest, ANameWithoutAnEndIsNone) {
  ControllerCache cache;
  cache.setName(std::wstring(260, L'c'));
  cache.setState('r');
  EXPECT_EQ(print(), L"");
}

class WaitingTest : public DomainControllerTest {
 protected:
  // Another process works the name out.
  WaitingTest() { cache.setState('w'); }

  ControllerCache cache;
};

TEST_F(WaitingTest, LooksAgainEvery876Milliseconds) {
  onSleep = [this] {
    if (sleeps.size() < 3) return;
    cache.setName(L"\\\\OTHERS");
    cache.setState('r');
  };
  EXPECT_EQ(print(), L"\\\\OTHERS");
  EXPECT_EQ(sleeps, (std::vector<DWORD>{876, 876, 876}));
  EXPECT_EQ(questions, 0);
}

TEST_F(WaitingTest, WorksItOutItselfWhenTheOtherGivesUp) {
  onSleep = [this] { cache.setState('\0'); };
  EXPECT_EQ(print(), L"\\\\PRIMARY");
  EXPECT_EQ(sleeps, std::vector<DWORD>{876});
  EXPECT_EQ(questions, 1);
}

class WaitingForEverTest : public WaitingTest, public ::testing::WithParamInterface<DWORD> {
 protected:
  // The first search for the account only: a job may search several times.
  WaitingForEverTest() {
    clock = GetParam();
    library.replace("LookupAccountNameW",
                    [this](LPCWSTR system, LPCWSTR, PSID, LPDWORD, LPWSTR, LPDWORD, PSID_NAME_USE) -> BOOL {
                      if (!waited) {
                        waited = clock - GetParam();
                        isLocal = system == nullptr || *system == L'\0';
                      }
                      SetLastError(ERROR_NONE_MAPPED);
                      return FALSE;
                    });
  }

  std::optional<DWORD> waited;
  bool isLocal = false;
};

TEST_P(WaitingForEverTest, EndsAfterAMinuteOfTheTickCount) {
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  ASSERT_TRUE(waited);
  EXPECT_GT(*waited, 60000U - 876);
  EXPECT_LT(*waited, 60000U + 876);
  for (const DWORD sleep : sleeps) EXPECT_EQ(sleep, 876U);
}

TEST_P(WaitingForEverTest, LooksTheAccountUpOnTheLocalMachine) {
  const Job job(library, printer);
  EXPECT_TRUE(isLocal);
  EXPECT_EQ(questions, 0);
  EXPECT_EQ(cache.state(), 'w');
}

// The last two pass the end of the tick count.
INSTANTIATE_TEST_SUITE_P(Clocks, WaitingForEverTest,
                         ::testing::Values(0U, 123456789U, 0x7FFFFF00U, 0xFFFFFFFFU, 0xFFFF8000U));

// Whoever works it out has died, and all that can ask for the user during a start does: the search for an old
// launcher, the override of the ini file, the settings, the defaults of a printer that is used for the first
// time.
class WholeStartTest : public WaitingTest {
 protected:
  WholeStartTest() {
    // A user who has logged on, and has no settings yet.
    SettingsKey(HKEY_USERS, kSid).removeTree();
    SettingsKey(HKEY_USERS, std::wstring(kSid) + L"\\Environment").setText(L"TEMP", L"C:\\");
    driverFolder.writeIni("[init]\noverrideUserSettings=1\nimageDPI=600\n");
  }

  // How often the user's part of the registry has been looked for.
  [[nodiscard]] std::ptrdiff_t questionsForTheUser() const {
    const auto& asked = byName.functionsAsked();
    return std::count(asked.begin(), asked.end(), "RegOpenCurrentUser");
  }

  void expectOneWait() const {
    EXPECT_EQ(sleeps, std::vector<DWORD>(69, 876));  // 60 s, and no second more than that of the last look
    EXPECT_EQ(accounts.lookups().size(), 2U);        // the sizes and the data
  }

  static constexpr wchar_t kSid[] = L"S-1-5-21-1-2-3-1000";

  const DriverFolder driverFolder{kWindowsNt4};
  const SettingsKey userSettings{HKEY_USERS,
                                 std::wstring(kSid) + L"\\Software\\Quillpress\\" + printer.name()};
};

TEST_F(WholeStartTest, WaitsAMinuteInAll) {
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  expectOneWait();
  EXPECT_EQ(questionsForTheUser(), 3);
  EXPECT_EQ(userSettings.number(L"imageDPI"), 600U) << "the ini file has not been read";
  EXPECT_EQ(userSettings.number(L"resIndex"), 3U) << "the defaults have not been written";
  EXPECT_EQ(job.number(L"resIndex"), 3) << "the settings have not been read";
}

TEST_F(WholeStartTest, WaitsAMinuteInAllByPrinterNameToo) {
  const Job job(library, printer.name());
  EXPECT_NE(job.handle(), 0U);
  expectOneWait();
  EXPECT_EQ(questionsForTheUser(), 3);
}

TEST_F(WholeStartTest, WaitsAMinuteInAllForAnUnknownAccount) {
  accounts.failSizes();
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(sleeps.size(), 69U);
  EXPECT_EQ(questionsForTheUser(), 3);
  EXPECT_EQ(accounts.lookups().size(), 1U);
}

TEST_F(WholeStartTest, IsAllThatTheJobWaits) {
  userSettings.setText(L"DefaultSaveDir", folder.path());
  userSettings.setNumber(L"FinishPrintEv", 1);
  Job job(library, printer);
  EXPECT_NE(job.text(L"pdfaXML"), L"");
  finish(job);
  EXPECT_EQ(userSettings.text(L"DocName"), L"Document");
  expectOneWait();
  EXPECT_EQ(questionsForTheUser(), 6);  // the metadata and two settings at the end
}

TEST_F(DomainControllerTest, WithoutTheMemoryNobodyIsAsked) {
  library.replace("OpenFileMappingW", [](DWORD, BOOL, LPCWSTR) -> HANDLE { return nullptr; });
  library.replace(
      "CreateFileMappingW",
      [](HANDLE, LPSECURITY_ATTRIBUTES, DWORD, DWORD, DWORD, LPCWSTR) -> HANDLE { return nullptr; });
  EXPECT_EQ(print(), L"");
  EXPECT_EQ(questions, 0);
}

TEST_F(DomainControllerTest, WithMemoryThatCannotBeMappedNobodyIsAsked) {
  library.replace("MapViewOfFile", [](HANDLE, DWORD, DWORD, DWORD, SIZE_T) -> LPVOID { return nullptr; });
  EXPECT_EQ(print(), L"");
  EXPECT_EQ(questions, 0);
  EXPECT_FALSE(ControllerCache::exists()) << "its handle stays open";
}

TEST_F(DomainControllerTest, AnotherObjectOfTheNameIsNotTheMemory) {
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, kCacheName));
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(print(), L"");
  EXPECT_EQ(questions, 0);
}

class CacheNameTest : public DomainControllerTest, public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(CacheNameTest, IsOfTheSessionWhereThereAreSessions) {
  pretend(library, GetParam());
  std::wstring created;
  DWORD size = 0;
  library.replace("CreateFileMappingW",
                  [&](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high, DWORD low,
                      LPCWSTR name) -> HANDLE {
                    created = name;
                    size = low;
                    return ::CreateFileMappingW(file, security, protection, high, low, name);
                  });
  print();
  EXPECT_EQ(created, GetParam().major >= 5 ? L"Local\\DomainControllerData" : L"DomainControllerData");
  EXPECT_EQ(size, 522U);
}

INSTANTIATE_TEST_SUITE_P(NtFamily, CacheNameTest,
                         ::testing::Values(kWindowsNt4, kWindows2000, kWindowsXp, kWindowsVista, kWindows7,
                                           kWindows10),
                         ::testing::PrintToStringParamName());

TEST_F(DomainControllerTest, IsNotAskedWhereWindowsOpensTheUsersRegistry) {
  byName.replace("RegOpenCurrentUser", ::RegOpenCurrentUser);
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(questions, 0);
  EXPECT_FALSE(ControllerCache::exists());
}

// How long the memory lives.
TEST(CacheLifeTest, EndsWithTheLibrary) {
  const Printer printer;
  {
    Library library;
    LoadedByName byName(library);
    byName.makeAbsent("RegOpenCurrentUser");
    pretend(library, kWindowsNt4);
    { const Job job(library, printer); }
    EXPECT_TRUE(ControllerCache::exists());
  }
  EXPECT_FALSE(ControllerCache::exists());
}

}  // namespace
}  // namespace quillpress::harness
