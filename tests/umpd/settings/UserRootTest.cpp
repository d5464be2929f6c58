// Whose registry the settings are in.

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

constexpr REGSAM kRead = KEY_QUERY_VALUE;
constexpr REGSAM kWrite = KEY_SET_VALUE;
constexpr REGSAM kCreate = KEY_CREATE_SUB_KEY;

// S-1-5-21-1-2-3-4, a user that has never been here.
struct Sid {
  BYTE revision = 1;
  BYTE count = 5;
  std::array<BYTE, 6> authority{0, 0, 0, 0, 0, 5};
  std::array<DWORD, 5> subAuthorities{21, 1, 2, 3, 4};
};
constexpr wchar_t kSidText[] = L"S-1-5-21-1-2-3-4";

class UserRootTest : public SettingsTest {
 protected:
  UserRootTest() {
    usePrinter();
    removeOtherRoots();
  }
  ~UserRootTest() override {
    removeOtherRoots();
    SettingsKey(HKEY_LOCAL_MACHINE, L"Software\\Quillpress").removeTree();
  }

  static void removeOtherRoots() {
    SettingsKey(HKEY_CURRENT_USER, kOtherRoot).removeTree();
    SettingsKey(HKEY_USERS, kSidText).removeTree();
  }

  // Has Windows find this key for the user, and notes the rights asked for.
  void openCurrentUserAs(const wchar_t* path) {
    byName.replace("RegOpenCurrentUser", [this, path](REGSAM access, PHKEY root) -> LONG {
      accesses.push_back(access);
      return RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, root, nullptr);
    });
  }

  // Has Windows refuse those rights for which `refused` answers true.
  template <class Refused>
  void refuseCurrentUser(Refused refused) {
    byName.replace("RegOpenCurrentUser", [this, refused](REGSAM access, PHKEY root) -> LONG {
      accesses.push_back(access);
      return refused(access) ? ERROR_ACCESS_DENIED : ::RegOpenCurrentUser(access, root);
    });
  }

  // Has the account system know the user by the identifier above.
  void knowUser() {
    library.replace("LookupAccountNameW",
                    [this](LPCWSTR system, LPCWSTR account, PSID sid, LPDWORD sidSize, LPWSTR domain,
                           LPDWORD domainSize, PSID_NAME_USE use) -> BOOL {
                      ++lookups;
                      EXPECT_TRUE(system == nullptr || *system == L'\0');
                      EXPECT_NE(account, nullptr);
                      const bool fits = *sidSize >= sizeof(Sid) && *domainSize >= 2;
                      *sidSize = sizeof(Sid);
                      *domainSize = fits ? 1 : 2;
                      if (!fits) {
                        SetLastError(ERROR_INSUFFICIENT_BUFFER);
                        return FALSE;
                      }
                      const Sid known;
                      std::memcpy(sid, &known, sizeof known);
                      std::memcpy(domain, L"D", sizeof L"D");
                      *use = SidTypeUser;
                      return TRUE;
                    });
  }

  static SettingsKey keyBelow(HKEY root, const std::wstring& path, const Printer& printer) {
    return {root, path + L"\\Software\\Quillpress\\" + printer.name()};
  }

  static constexpr wchar_t kOtherRoot[] = L"Software\\Quillpress test root";

  std::vector<REGSAM> accesses;
  int lookups = 0;
};

TEST_F(UserRootTest, The9xFamilyUsesTheCurrentUser) {
  pretend(library, kWindows98);
  openCurrentUserAs(kOtherRoot);
  key.setText(L"mark", L"current user");
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
  EXPECT_TRUE(accesses.empty());
}

// One opening of the printer's key.
struct Opening {
  HKEY root;
  REGSAM access;
};

class PrinterKeyTest : public UserRootTest {
 protected:
  PrinterKeyTest() {
    library.replace(
        "RegCreateKeyExW",
        [this](HKEY root, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
               LPSECURITY_ATTRIBUTES security, PHKEY opened, LPDWORD disposition) -> LONG {
          if (path == L"Software\\Quillpress\\" + printer.name()) openings.push_back({root, access});
          return ::RegCreateKeyExW(root, path, reserved, className, options, access, security, opened,
                                   disposition);
        });
  }

  std::vector<Opening> openings;
};

TEST_F(PrinterKeyTest, IsOpenedForReadingToLoad) {
  const Job job(library, printer.name());
  ASSERT_EQ(openings.size(), 1U);
  EXPECT_EQ(openings.front().access, kRead);
}

TEST_F(PrinterKeyTest, IsOpenedForWritingToStore) {
  folder.writeIni("[init]\noverrideUserSettings=1\n");
  const Job job(library, printer.name());
  ASSERT_EQ(openings.size(), 2U);
  EXPECT_EQ(openings.front().access, kWrite);
  EXPECT_EQ(openings.back().access, kRead);
}

TEST_F(PrinterKeyTest, LiesBelowTheCurrentUserOnThe9xFamily) {
  pretend(library, kWindows98);
  const Job job(library, printer.name());
  ASSERT_FALSE(openings.empty());
  for (const Opening& each : openings) EXPECT_EQ(each.root, HKEY_CURRENT_USER);
}

class NtFamilyRootTest : public UserRootTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  NtFamilyRootTest() { pretend(library, GetParam()); }
};

TEST_P(NtFamilyRootTest, IsWhatTheSystemOpensForTheCurrentUser) {
  openCurrentUserAs(kOtherRoot);
  keyBelow(HKEY_CURRENT_USER, kOtherRoot, printer).setText(L"mark", L"other root");
  key.setText(L"mark", L"current user");
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"other root");
}

TEST_P(NtFamilyRootTest, IsTheUsersIdentifierWithoutThatFunction) {
  byName.makeAbsent("RegOpenCurrentUser");
  knowUser();
  keyBelow(HKEY_USERS, kSidText, printer).setText(L"mark", L"identifier");
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"identifier");
  EXPECT_GT(lookups, 0);
}

INSTANTIATE_TEST_SUITE_P(Releases, NtFamilyRootTest, ::testing::ValuesIn(kNtFamily), releaseName);

TEST_F(UserRootTest, NewSettingsAndTheGlobalNameAreWrittenThere) {
  openCurrentUserAs(kOtherRoot);
  const Job job(library, printer.name());
  EXPECT_EQ(keyBelow(HKEY_CURRENT_USER, kOtherRoot, printer).number(L"imageDPI"), 300U);
  EXPECT_EQ(SettingsKey(HKEY_CURRENT_USER, std::wstring(kOtherRoot) + L"\\Software\\Quillpress")
                .text(L"printerName"),
            printer.name());
  EXPECT_EQ(SettingsKey::global().type(L"printerName"), std::nullopt);
  EXPECT_EQ(key.names(), (std::vector<std::wstring>{L"in use"}));
}

TEST_F(UserRootTest, ReadingAsksForTheRightToCreateToo) {
  refuseCurrentUser([](REGSAM) { return false; });
  const Job job(library, printer.name());
  ASSERT_FALSE(accesses.empty());
  for (const REGSAM access : accesses) EXPECT_EQ(access, kRead | kCreate);
}

TEST_F(UserRootTest, WritingAsksForTheRightToCreateToo) {
  folder.writeIni("[init]\noverrideUserSettings=1\n");
  refuseCurrentUser([](REGSAM) { return false; });
  const Job job(library, printer.name());
  EXPECT_NE(std::count(accesses.begin(), accesses.end(), kWrite | kCreate), 0);
  for (const REGSAM access : accesses) {
    EXPECT_TRUE((access & kCreate) != 0 && (access & ~(kRead | kWrite | kCreate)) == 0) << access;
  }
}

TEST_F(UserRootTest, WithoutTheRightToCreateTheOthersAreAskedForAlone) {
  key.setText(L"mark", L"current user");
  refuseCurrentUser([](REGSAM access) { return (access & kCreate) != 0; });
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
  ASSERT_GE(accesses.size(), 2U);
  EXPECT_EQ(accesses.at(0), kRead | kCreate);
  EXPECT_EQ(accesses.at(1), kRead);
}

TEST_F(UserRootTest, WithoutAnyRightThereAreNoSettings) {
  key.setText(L"mark", L"current user");
  refuseCurrentUser([](REGSAM) { return true; });
  const Job job(library, printer.name());
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"mark", L"default"), L"default");
  EXPECT_EQ(job.number(L"imageDPI", 17), 17);
  ASSERT_GE(accesses.size(), 2U);
  EXPECT_EQ(accesses.at(0), kRead | kCreate);
  EXPECT_EQ(accesses.at(1), kRead);
}

TEST_F(UserRootTest, WithoutAnyRightNothingIsWritten) {
  folder.writeIni("[init]\noverrideUserSettings=1\nimageDPI=600\n");
  refuseCurrentUser([](REGSAM) { return true; });
  const Job job(library, printer.name());
  EXPECT_EQ(key.names(), (std::vector<std::wstring>{L"in use"}));
}

TEST_F(UserRootTest, WithoutAnyRightTheIniOverrideHoldsForTheJob) {
  folder.writeIni("[init]\noverrideUserSettings=1\nimageDPI=600\n");
  refuseCurrentUser([](REGSAM) { return true; });
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"imageDPI"), 600);
}

TEST_F(UserRootTest, OneRootIsOpenedToLoad) {
  refuseCurrentUser([](REGSAM) { return false; });
  const Job job(library, printer.name());
  // For the name of the printer that is used without one, and for the settings.
  EXPECT_EQ(accesses.size(), 2U);
}

TEST_F(UserRootTest, OneRootIsOpenedToLoadAndToWriteTheDefaults) {
  key.removeTree();
  refuseCurrentUser([](REGSAM) { return false; });
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"imageDPI"), 300);
  EXPECT_EQ(accesses.size(), 2U);
}

TEST_F(UserRootTest, TheLookupIsNotMadeWhereTheFunctionExists) {
  knowUser();
  refuseCurrentUser([](REGSAM) { return true; });
  const Job job(library, printer.name());
  EXPECT_EQ(lookups, 0);
}

TEST_F(UserRootTest, TheFunctionIsLookedForInAdvapi32) {
  byName.makeMissing(L"advapi32.dll");
  SettingsKey(HKEY_LOCAL_MACHINE, L"Software\\Quillpress").setNumber(L"DisableDomainControllerLookup", 1);
  openCurrentUserAs(kOtherRoot);
  key.setText(L"mark", L"current user");
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
  EXPECT_TRUE(accesses.empty());
}

class NoLookupTest : public UserRootTest {
 protected:
  NoLookupTest() {
    pretend(library, kWindowsNt4);
    byName.makeAbsent("RegOpenCurrentUser");
    knowUser();
    key.setText(L"mark", L"current user");
    keyBelow(HKEY_USERS, kSidText, printer).setText(L"mark", L"identifier");
  }

  SettingsKey machine{HKEY_LOCAL_MACHINE, L"Software\\Quillpress"};
};

TEST_F(NoLookupTest, DisabledByANumberUsesTheCurrentUser) {
  machine.setNumber(L"DisableDomainControllerLookup", 1);
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
  EXPECT_EQ(lookups, 0);
}

TEST_F(NoLookupTest, IsDisabledByTheMerePresenceOfTheValue) {
  machine.setNumber(L"DisableDomainControllerLookup", 0);
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
  machine.setText(L"DisableDomainControllerLookup", L"");
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
  machine.setBytes(L"DisableDomainControllerLookup", REG_BINARY, {});
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"current user");
}

TEST_F(NoLookupTest, IsNotDisabledByAnotherValue) {
  machine.setNumber(L"Disable", 1);
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"identifier");
}

TEST_F(NoLookupTest, IsNotDisabledByTheUser) {
  SettingsKey::global().setNumber(L"DisableDomainControllerLookup", 1);
  EXPECT_EQ(Job(library, printer.name()).text(L"mark"), L"identifier");
  SettingsKey::global().remove(L"DisableDomainControllerLookup");
}

TEST_F(NoLookupTest, AnIdentifierWithoutAKeyMeansNoSettings) {
  removeOtherRoots();
  const Job job(library, printer.name());
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"mark", L"default"), L"default");
  EXPECT_FALSE(SettingsKey(HKEY_USERS, kSidText).exists());
}

TEST_F(NoLookupTest, AUserWhomNobodyKnowsHasNoSettings) {
  FAIL_EVERY(library, LookupAccountNameW, FALSE, ERROR_NONE_MAPPED);
  const Job job(library, printer.name());
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"mark", L"default"), L"default");
}

// Asking for the account may take a minute of the network's time.
TEST_F(NoLookupTest, AJobLooksTheAccountUpOnce) {
  const Job known(library, printer);
  EXPECT_EQ(lookups, 2);  // for the sizes and for the data
}

TEST_F(NoLookupTest, APrintersFirstJobLooksTheAccountUpOnceToo) {
  keyBelow(HKEY_USERS, kSidText, printer).removeTree();
  Job first(library, printer);
  EXPECT_EQ(first.number(L"imageDPI"), 300);
  EXPECT_EQ(lookups, 2);
  EXPECT_EQ(keyBelow(HKEY_USERS, kSidText, printer).number(L"jpegImageQuality"), 75U);
  EXPECT_EQ(first.end(), 1);
  EXPECT_EQ(lookups, 2);
}

TEST_F(NoLookupTest, AnUnknownAccountIsAskedForOnceAJob) {
  int questions = 0;
  library.replace("LookupAccountNameW",
                  [&](LPCWSTR, LPCWSTR, PSID, LPDWORD, LPWSTR, LPDWORD, PSID_NAME_USE) -> BOOL {
                    ++questions;
                    SetLastError(ERROR_NONE_MAPPED);
                    return FALSE;
                  });
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(questions, 1);
}

TEST_F(NoLookupTest, TheIdentifiersKeyIsOpenedWithTheRightsNeededAlone) {
  std::vector<REGSAM> rights;
  library.replace("RegOpenKeyExW",
                  [&rights](HKEY root, LPCWSTR path, DWORD options, REGSAM access, PHKEY opened) -> LONG {
                    if (root == HKEY_USERS) {
                      EXPECT_STREQ(path, kSidText);
                      rights.push_back(access);
                    }
                    return ::RegOpenKeyExW(root, path, options, access, opened);
                  });
  const Job job(library, printer.name());
  ASSERT_FALSE(rights.empty());
  for (const REGSAM access : rights) EXPECT_EQ(access, kRead);
}

TEST_F(UserRootTest, AKeyThatCannotBeOpenedMeansNoSettings) {
  key.setText(L"mark", L"current user");
  library.replace("RegCreateKeyExW",
                  [](HKEY, LPCWSTR, DWORD, LPWSTR, DWORD, REGSAM, LPSECURITY_ATTRIBUTES, PHKEY,
                     LPDWORD) -> LONG { return ERROR_ACCESS_DENIED; });
  const Job job(library, printer.name());
  EXPECT_NE(job.handle(), 0U);
  EXPECT_EQ(job.text(L"mark", L"default"), L"default");
  EXPECT_EQ(job.number(L"imageDPI", 17), 17);
}

}  // namespace
}  // namespace quillpress::harness
