#include <gtest/gtest.h>

#include "tests/umpd/harness/SettingsKey.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/settings/Registry.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
namespace {

using Bytes = std::vector<BYTE>;

class RegistryValuesTest : public classes::ClassTest {
 protected:
  RegistryValuesTest() {
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              key.receive(), nullptr),
              ERROR_SUCCESS);
  }
  ~RegistryValuesTest() override { stored.removeTree(); }

  // What the map holds, as NAME=VALUE; in the order of the map.
  [[nodiscard]] std::wstring listed() const {
    std::wstring list;
    for (const StringMap::Entry& entry : map) list += entry.key + L"=" + entry.value + L";";
    return list;
  }

  const std::wstring path = L"Software\\" + classes::newObjectName();
  const harness::SettingsKey stored{HKEY_CURRENT_USER, path};
  RegistryKey key;
  StringMap map;
  unsigned refused = 0;
};

TEST_F(RegistryValuesTest, AValueIsThereWhateverItsKind) {
  EXPECT_FALSE(hasValue(key.get(), L"a"));
  stored.setBytes(L"a", REG_BINARY, {});
  EXPECT_TRUE(hasValue(key.get(), L"a"));
  EXPECT_TRUE(hasValue(key.get(), L"A"));
}

TEST_F(RegistryValuesTest, NumbersAreRead) {
  stored.setNumber(L"a", 300);
  stored.setNumber(L"b", 0xFFFFFFFF);
  int number = 7;
  EXPECT_EQ(readNumber(key.get(), L"a", number), ReadResult::kFound);
  EXPECT_EQ(number, 300);
  EXPECT_EQ(readNumber(key.get(), L"b", number), ReadResult::kFound);
  EXPECT_EQ(number, -1);
}

TEST_F(RegistryValuesTest, AnAbsentNumberLeavesTheOldOne) {
  int number = 7;
  EXPECT_EQ(readNumber(key.get(), L"a", number), ReadResult::kAbsent);
  EXPECT_EQ(number, 7);
}

TEST_F(RegistryValuesTest, WhatIsNoNumberOf32BitsFails) {
  stored.setText(L"text", L"1");
  stored.setText(L"digits", L"12345");
  stored.setBytes(L"binary", REG_BINARY, {1, 0, 0, 0});
  stored.setBytes(L"short", REG_DWORD, {1, 0});
  stored.setBytes(L"empty", REG_DWORD, {});
  stored.setBytes(L"long", REG_DWORD, {1, 0, 0, 0, 0, 0, 0, 0});
  for (const wchar_t* name : {L"text", L"digits", L"binary", L"short", L"empty", L"long"}) {
    int number = 7;
    EXPECT_EQ(readNumber(key.get(), name, number), ReadResult::kFailed) << name;
    EXPECT_EQ(number, 7) << name;
  }
}

TEST_F(RegistryValuesTest, AKeyThatCannotBeReadFails) {
  int number = 7;
  EXPECT_EQ(readNumber(reinterpret_cast<HKEY>(0x1234), L"a", number), ReadResult::kFailed);
  EXPECT_EQ(readText(reinterpret_cast<HKEY>(0x1234), L"a"), std::nullopt);
  EXPECT_FALSE(hasValue(reinterpret_cast<HKEY>(0x1234), L"a"));
}

TEST_F(RegistryValuesTest, TextsAreReadWithoutTheirFinalZero) {
  stored.setText(L"a", L"Report \x00C4\x4E2D");
  stored.setText(L"empty", L"");
  stored.setText(L"long", std::wstring(5000, L'n'));
  EXPECT_EQ(readText(key.get(), L"a"), L"Report \x00C4\x4E2D");
  EXPECT_EQ(readText(key.get(), L"empty"), L"");
  EXPECT_EQ(readText(key.get(), L"long"), std::wstring(5000, L'n'));
}

TEST_F(RegistryValuesTest, ATextMayLackItsFinalZero) {
  stored.setBytes(L"a", REG_SZ, {'a', 0, 'b', 0});
  EXPECT_EQ(readText(key.get(), L"a"), L"ab");
}

TEST_F(RegistryValuesTest, HalfACharacterIsNotRead) {
  stored.setBytes(L"five", REG_SZ, {'a', 0, 'b', 0, 'c'});
  stored.setBytes(L"one", REG_SZ, {'a'});
  EXPECT_EQ(readText(key.get(), L"five"), L"ab");
  EXPECT_EQ(readText(key.get(), L"one"), L"");
}

TEST_F(RegistryValuesTest, AValueOfNoBytesIsTheEmptyText) {
  stored.setBytes(L"a", REG_SZ, {});
  EXPECT_EQ(readText(key.get(), L"a"), L"");
}

TEST_F(RegistryValuesTest, ATextEndsAtItsFirstZero) {
  stored.setBytes(L"a", REG_SZ, {'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0});
  EXPECT_EQ(readText(key.get(), L"a"), L"a");
}

TEST_F(RegistryValuesTest, OtherKindsAreNoTexts) {
  stored.setNumber(L"number", 1);
  stored.setBytes(L"binary", REG_BINARY, {'a', 0, 0, 0});
  stored.setBytes(L"expanded", REG_EXPAND_SZ, {'a', 0, 0, 0});
  stored.setBytes(L"several", REG_MULTI_SZ, {'a', 0, 0, 0, 0, 0});
  for (const wchar_t* name : {L"number", L"binary", L"expanded", L"several", L"absent"})
    EXPECT_EQ(readText(key.get(), name), std::nullopt) << name;
}

TEST_F(RegistryValuesTest, NumbersAreWrittenAsFourBytes) {
  EXPECT_TRUE(writeNumber(key.get(), L"a", -2));
  EXPECT_EQ(stored.type(L"a"), DWORD{REG_DWORD});
  EXPECT_EQ(stored.bytes(L"a"), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
}

TEST_F(RegistryValuesTest, TextsAreWrittenWithTheirFinalZero) {
  EXPECT_TRUE(writeText(key.get(), L"a", L"b\x4E2D"));
  EXPECT_TRUE(writeText(key.get(), L"empty", L""));
  EXPECT_EQ(stored.type(L"a"), DWORD{REG_SZ});
  EXPECT_EQ(stored.bytes(L"a"), (Bytes{'b', 0, 0x2D, 0x4E, 0, 0}));
  EXPECT_EQ(stored.bytes(L"empty"), (Bytes{0, 0}));
}

TEST_F(RegistryValuesTest, AKeyForReadingCannotBeWritten) {
  RegistryKey readable;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_QUERY_VALUE, readable.receive()),
            ERROR_SUCCESS);
  EXPECT_FALSE(writeNumber(readable.get(), L"a", 1));
  EXPECT_FALSE(writeText(readable.get(), L"b", L"1"));
  EXPECT_TRUE(stored.names().empty());
}

TEST_F(RegistryValuesTest, AllNumbersAndTextsAreRead) {
  stored.setNumber(L"a", 300);
  stored.setNumber(L"b", 0xFFFFFFFF);
  stored.setText(L"c", L"Report");
  stored.setText(L"d", L"");
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  EXPECT_EQ(listed(), L"a=300;b=-1;c=Report;d=;");
  EXPECT_EQ(refused, 0U);
}

TEST_F(RegistryValuesTest, OtherKindsAndValuesWithoutNameAreLeftOut) {
  stored.setText(L"", L"default");
  stored.setBytes(L"a", REG_BINARY, {1, 2, 3, 4});
  stored.setBytes(L"b", REG_EXPAND_SZ, {'a', 0, 0, 0});
  stored.setBytes(L"c", REG_MULTI_SZ, {'a', 0, 0, 0, 0, 0});
  stored.setBytes(L"d", REG_NONE, {});
  stored.setText(L"e", L"text");
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  EXPECT_EQ(listed(), L"e=text;");
}

TEST_F(RegistryValuesTest, OddTextsAreReadAsBefore) {
  stored.setBytes(L"a", REG_SZ, {'a', 0, 'b', 0});
  stored.setBytes(L"b", REG_SZ, {'a', 0, 'b'});
  stored.setBytes(L"c", REG_SZ, {});
  stored.setBytes(L"d", REG_SZ, {'a', 0, 0, 0, 'b', 0});
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  EXPECT_EQ(listed(), L"a=ab;b=a;c=;d=a;");
}

TEST_F(RegistryValuesTest, LongNamesAndTextsAreReadWhole) {
  const std::wstring name(200, L'n');
  stored.setText(name, std::wstring(5000, L'v'));
  stored.setText(L"short", L"1");
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  ASSERT_NE(map.find(name), nullptr);
  EXPECT_EQ(*map.find(name), std::wstring(5000, L'v'));
  EXPECT_EQ(map.size(), 2U);
}

TEST_F(RegistryValuesTest, TheMapIsReplaced) {
  ASSERT_TRUE(map.set(L"old", L"1"));
  stored.setText(L"new", L"2");
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  EXPECT_EQ(listed(), L"new=2;");
}

TEST_F(RegistryValuesTest, AnEmptyKeyEmptiesTheMap) {
  ASSERT_TRUE(map.set(L"old", L"1"));
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  EXPECT_EQ(listed(), L"");
}

TEST_F(RegistryValuesTest, ValuesThatFindNoRoomAreCounted) {
  for (int i = 0; i < 193; ++i) stored.setNumber(L"value" + std::to_wstring(i), static_cast<DWORD>(i));
  EXPECT_TRUE(readAllValues(key.get(), map, refused));
  EXPECT_EQ(map.size(), 190U);
  EXPECT_EQ(refused, 3U);
}

TEST_F(RegistryValuesTest, AKeyThatDoesNotTellLeavesTheMap) {
  ASSERT_TRUE(map.set(L"old", L"1"));
  EXPECT_FALSE(readAllValues(reinterpret_cast<HKEY>(0x1234), map, refused));
  EXPECT_EQ(listed(), L"old=1;");
}

}  // namespace
}  // namespace quillpress::driver
