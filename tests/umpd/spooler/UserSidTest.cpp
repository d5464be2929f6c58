// The user's identifier as text, by which a system without RegOpenCurrentUser finds the user's registry.

#include <vector>

#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/spooler/AccountSystem.h"
#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

class UserSidTest : public SpoolerTest {
 protected:
  UserSidTest() {
    pretend(library, kWindowsNt4);
    byName.makeAbsent("RegOpenCurrentUser");
    library.replace("RegOpenKeyExW",
                    [this](HKEY root, LPCWSTR path, DWORD options, REGSAM access, PHKEY opened) -> LONG {
                      if (root == HKEY_USERS) keys.emplace_back(path);
                      return ::RegOpenKeyExW(root, path, options, access, opened);
                    });
  }

  // The key below HKEY_USERS that a job of the user looks for; every look must be for the same.
  std::wstring textOf(const std::vector<BYTE>& sid) {
    accounts.setSid(sid);
    keys.clear();
    const Job job(library, printer);
    EXPECT_NE(job.handle(), 0U);
    for (const std::wstring& key : keys) EXPECT_EQ(key, keys.front());
    return keys.empty() ? L"" : keys.front();
  }

  std::vector<std::wstring> keys;
  AccountSystem accounts{library};
};

TEST_F(UserSidTest, IsTheKeyOfTheUsersSettings) {
  const SettingsKey user(HKEY_USERS, L"S-1-5-21-11-22-33-44");
  SettingsKey(HKEY_USERS, L"S-1-5-21-11-22-33-44\\Software\\Quillpress\\" + printer.name())
      .setText(L"mark", L"found");
  accounts.setSid(sidOf({0, 0, 0, 0, 0, 5}, {21, 11, 22, 33, 44}));
  EXPECT_EQ(Job(library, printer).text(L"mark"), L"found");
  user.removeTree();
}

TEST_F(UserSidTest, OfTheNtAuthorityBeginsWithFive) {
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 5}, {21, 397955417, 626881126, 188441444, 1010})),
            L"S-1-5-21-397955417-626881126-188441444-1010");
}

TEST_F(UserSidTest, HasAnAuthorityOfFourBytesInDecimal) {
  EXPECT_EQ(textOf(sidOf({0, 0, 0xFF, 0xFF, 0xFF, 0xFF}, {7})), L"S-1-4294967295-7");
  EXPECT_EQ(textOf(sidOf({0, 0, 0x01, 0x02, 0x03, 0x04}, {7})), L"S-1-16909060-7");
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 0}, {0})), L"S-1-0-0");
}

TEST_F(UserSidTest, HasAnAuthorityWithAFirstByteInHexadecimal) {
  EXPECT_EQ(textOf(sidOf({0x01, 0, 0, 0, 0, 5}, {7})), L"S-1-0x010000000005-7");
  EXPECT_EQ(textOf(sidOf({0xAB, 0xCD, 0xEF, 0x01, 0x02, 0x0A}, {7})), L"S-1-0xabcdef01020a-7");
}

TEST_F(UserSidTest, HasAnAuthorityWithASecondByteInHexadecimal) {
  EXPECT_EQ(textOf(sidOf({0, 0x10, 0, 0, 0, 5}, {7})), L"S-1-0x001000000005-7");
}

TEST_F(UserSidTest, HasEverySubAuthorityAsAnUnsignedNumber) {
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 5}, {0, 0x80000000, 0xFFFFFFFF})), L"S-1-5-0-2147483648-4294967295");
}

TEST_F(UserSidTest, MayHaveNoSubAuthority) {
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 5}, {})), L"S-1-5");
}

TEST_F(UserSidTest, MayHaveFifteenSubAuthorities) {
  std::wstring text = L"S-1-5";
  for (int i = 0; i < 15; ++i) text += L"-4294967295";
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 5}, std::vector<DWORD>(15, 0xFFFFFFFF))), text);
}

TEST_F(UserSidTest, OfAnotherRevisionIsNone) {
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 5}, {21, 1}, 0)), L"");
  EXPECT_EQ(textOf(sidOf({0, 0, 0, 0, 0, 5}, {21, 1}, 2)), L"");
}

TEST_F(UserSidTest, OfAnUnknownAccountIsNone) {
  accounts.failSizes();
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_TRUE(keys.empty());
  EXPECT_FALSE(accounts.lookups().empty());
}

TEST_F(UserSidTest, OfAnAccountWhoseDataCannotBeHadIsNone) {
  accounts.failData();
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_TRUE(keys.empty());
}

TEST_F(UserSidTest, IsAskedForItsSizesFirst) {
  const Job job(library, printer);
  ASSERT_GE(accounts.lookups().size(), 2U);
  EXPECT_TRUE(accounts.lookups()[0].isForSizes);
  EXPECT_FALSE(accounts.lookups()[1].isForSizes);
}

TEST_F(UserSidTest, IsThatOfTheUserWhoPrints) {
  pretendUser(library, L"J\u00FCrgen");
  const Job job(library, printer);
  ASSERT_FALSE(accounts.lookups().empty());
  for (const AccountSystem::Lookup& lookup : accounts.lookups()) EXPECT_EQ(lookup.account, L"J\u00FCrgen");
}

TEST_F(UserSidTest, IsNotNeededOnWindows9x) {
  pretend(library, kWindows98);
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_TRUE(accounts.lookups().empty());
  EXPECT_TRUE(keys.empty());
}

}  // namespace
}  // namespace quillpress::harness
