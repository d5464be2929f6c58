#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "umpd/rules/StringMap.h"

namespace quillpress::driver {
namespace {

std::wstring keyNumber(std::size_t number) {
  return L"key" + std::to_wstring(number);
}

void fill(StringMap& map, std::size_t count) {
  for (std::size_t i = map.size(); i < count; ++i) ASSERT_TRUE(map.set(keyNumber(i), std::to_wstring(i)));
}

std::vector<std::wstring> keysOf(const StringMap& map) {
  std::vector<std::wstring> keys;
  for (const StringMap::Entry& entry : map) keys.push_back(entry.key);
  return keys;
}

TEST(StringMapTest, IsEmptyAtFirst) {
  const StringMap map;
  EXPECT_EQ(map.size(), 0U);
  EXPECT_EQ(map.begin(), map.end());
  EXPECT_EQ(map.find(L"passthru"), nullptr);
  EXPECT_EQ(map.findInteger(L"passthru"), std::nullopt);
}

TEST(StringMapTest, FindsWhatWasSet) {
  StringMap map;
  EXPECT_TRUE(map.set(L"LastDir", L"C:\\Out"));
  ASSERT_NE(map.find(L"LastDir"), nullptr);
  EXPECT_EQ(*map.find(L"LastDir"), L"C:\\Out");
  EXPECT_EQ(map.find(L"LastDi"), nullptr);
  EXPECT_EQ(map.find(L"LastDirs"), nullptr);
}

TEST(StringMapTest, FoldsTheLettersAToZ) {
  StringMap map;
  ASSERT_TRUE(map.set(L"passthru", L"1"));
  ASSERT_TRUE(map.set(L"ABCDEFGHIJKLMNOPQRSTUVWXYZ", L"all"));
  ASSERT_NE(map.find(L"PASSTHRU"), nullptr);
  EXPECT_EQ(*map.find(L"PassThru"), L"1");
  ASSERT_NE(map.find(L"abcdefghijklmnopqrstuvwxyz"), nullptr);
}

// The characters around the letters, and letters that other languages fold.
TEST(StringMapTest, FoldsNothingElse) {
  const std::pair<const wchar_t*, const wchar_t*> pairs[] = {
      {L"@", L"`"}, {L"[", L"{"}, {L"\x00C4", L"\x00E4"}, {L"\x0410", L"\x0430"}, {L"i", L"\x0130"},
  };
  for (const auto& [upper, lower] : pairs) {
    StringMap map;
    ASSERT_TRUE(map.set(upper, L"upper"));
    EXPECT_EQ(map.find(lower), nullptr) << lower;
  }
}

TEST(StringMapTest, AChangedEntryKeepsItsPlaceAndItsSpelling) {
  StringMap map;
  ASSERT_TRUE(map.set(L"First", L"1"));
  ASSERT_TRUE(map.set(L"Second", L"2"));
  EXPECT_TRUE(map.set(L"FIRST", L"one"));
  EXPECT_EQ(map.size(), 2U);
  EXPECT_EQ(keysOf(map), (std::vector<std::wstring>{L"First", L"Second"}));
  EXPECT_EQ(map.begin()->value, L"one");
}

TEST(StringMapTest, KeepsTheOrderInWhichNamesCame) {
  StringMap map;
  for (const wchar_t* key : {L"z", L"a", L"M"}) ASSERT_TRUE(map.set(key, L"v"));
  EXPECT_EQ(keysOf(map), (std::vector<std::wstring>{L"z", L"a", L"M"}));
}

TEST(StringMapTest, StoresCopies) {
  StringMap map;
  std::wstring key = L"name";
  std::wstring value = L"value";
  ASSERT_TRUE(map.set(key, value));
  key = L"other";
  value = L"changed";
  ASSERT_NE(map.find(L"name"), nullptr);
  EXPECT_EQ(*map.find(L"name"), L"value");
}

// An entry may be set from its own text.
TEST(StringMapTest, AValueMayBePartOfItself) {
  StringMap map;
  ASSERT_TRUE(map.set(L"name", L"a long value that needs memory of its own"));
  const std::wstring_view value = *map.find(L"name");
  EXPECT_TRUE(map.set(L"name", value.substr(2, 4)));
  EXPECT_EQ(*map.find(L"name"), L"long");
}

TEST(StringMapTest, HasRoomFor190Names) {
  StringMap map;
  fill(map, 189);
  EXPECT_TRUE(map.set(L"the 190th", L"fits"));
  EXPECT_FALSE(map.set(L"the 191st", L"does not"));
  EXPECT_EQ(map.size(), 190U);
  EXPECT_EQ(map.find(L"the 191st"), nullptr);
  ASSERT_NE(map.find(L"THE 190TH"), nullptr);
  EXPECT_EQ(*map.find(L"the 190th"), L"fits");
}

TEST(StringMapTest, AFullMapCanStillBeChanged) {
  StringMap map;
  fill(map, StringMap::kCapacity);
  EXPECT_TRUE(map.set(keyNumber(0), L"first"));
  EXPECT_TRUE(map.set(keyNumber(189), L"last"));
  EXPECT_TRUE(map.setInteger(L"KEY100", 7));
  EXPECT_EQ(*map.find(keyNumber(0)), L"first");
  EXPECT_EQ(*map.find(keyNumber(189)), L"last");
  EXPECT_EQ(*map.find(keyNumber(100)), L"7");
  EXPECT_FALSE(map.setInteger(L"another", 1));
}

TEST(StringMapTest, ClearForgetsEverything) {
  StringMap map;
  fill(map, StringMap::kCapacity);
  map.clear();
  EXPECT_EQ(map.size(), 0U);
  EXPECT_EQ(map.begin(), map.end());
  EXPECT_EQ(map.find(keyNumber(0)), nullptr);
  fill(map, StringMap::kCapacity);
  EXPECT_EQ(*map.find(keyNumber(189)), L"189");
}

TEST(StringMapTest, IntegersAreDecimalTexts) {
  StringMap map;
  ASSERT_TRUE(map.setInteger(L"zero", 0));
  ASSERT_TRUE(map.setInteger(L"least", std::numeric_limits<int>::min()));
  ASSERT_TRUE(map.setInteger(L"most", std::numeric_limits<int>::max()));
  EXPECT_EQ(*map.find(L"zero"), L"0");
  EXPECT_EQ(*map.find(L"least"), L"-2147483648");
  EXPECT_EQ(*map.find(L"most"), L"2147483647");
  EXPECT_EQ(map.findInteger(L"least"), std::numeric_limits<int>::min());
  EXPECT_EQ(map.findInteger(L"most"), std::numeric_limits<int>::max());
}

TEST(StringMapTest, TextsReadAsTheIntegerTheyBeginWith) {
  StringMap map;
  ASSERT_TRUE(map.set(L"quality", L"75%"));
  ASSERT_TRUE(map.set(L"word", L"high"));
  ASSERT_TRUE(map.set(L"empty", L""));
  EXPECT_EQ(map.findInteger(L"QUALITY"), 75);
  EXPECT_EQ(map.findInteger(L"word"), 0);
  EXPECT_EQ(map.findInteger(L"empty"), 0);
}

}  // namespace
}  // namespace quillpress::driver
