#include <gtest/gtest.h>

#include <map>

#include "postscript/lib/objects/DictionaryData.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

std::string walk(const DictionaryData& dictionary) {
  std::string text;
  for (std::size_t i = 0; i < dictionary.count(); ++i) {
    const auto& entry = dictionary.entryInOrder(i);
    text += entry.key + "=" + entry.value->printString() + ";";
  }
  return text;
}

void define(DictionaryData& dictionary, std::string_view key, int value) {
  dictionary.define(DictionaryKey(key), make<IntegerObject>(value));
}

TEST(DictionaryDataTest, IsWalkedInKeyOrder) {
  DictionaryData dictionary;
  define(dictionary, "zeta", 1);
  define(dictionary, "alpha", 2);
  define(dictionary, "mu", 3);
  EXPECT_EQ(walk(dictionary), "alpha=2;mu=3;zeta=1;");
}

TEST(DictionaryDataTest, KeysAreComparedAsUnsignedBytes) {
  DictionaryData dictionary;
  define(dictionary, "\xe9", 1);
  define(dictionary, "z", 2);
  define(dictionary, "", 3);
  define(dictionary, std::string_view("z\0", 2), 4);
  EXPECT_EQ(walk(dictionary), "=3;z=2;" + std::string("z\0=4;", 5) + "\xe9=1;");
}

TEST(DictionaryDataTest, LooksUpWithoutCounting) {
  DictionaryData dictionary;
  EXPECT_EQ(dictionary.lookup(DictionaryKey("a")), nullptr);
  const auto value = make<IntegerObject>(1);
  dictionary.define(DictionaryKey("a"), value);
  EXPECT_EQ(dictionary.lookup(DictionaryKey("a")), value.get());
  EXPECT_EQ(dictionary.lookup(DictionaryKey("b")), nullptr);
  EXPECT_EQ(value->refCount, 2);
}

TEST(DictionaryDataTest, AReplacedValueIsReleased) {
  DictionaryData dictionary;
  const auto old = make<IntegerObject>(1);
  dictionary.define(DictionaryKey("a"), old);
  define(dictionary, "a", 2);
  EXPECT_EQ(old->refCount, 1);
  EXPECT_EQ(walk(dictionary), "a=2;");
}

TEST(DictionaryDataTest, AValueDefinedAgainUnderItsOwnKeySurvives) {
  DictionaryData dictionary;
  PostscriptObject* value = new IntegerObject(1);
  dictionary.define(DictionaryKey("a"), value);
  dictionary.define(DictionaryKey("a"), dictionary.lookup(DictionaryKey("a")));
  EXPECT_EQ(dictionary.lookup(DictionaryKey("a")), value);
  EXPECT_EQ(value->refCount, 1);
}

TEST(DictionaryDataTest, ItsEndReleasesEveryValue) {
  const auto value = make<IntegerObject>(1);
  {
    DictionaryData dictionary;
    dictionary.define(DictionaryKey("a"), value);
  }
  EXPECT_EQ(value->refCount, 1);
}

TEST(DictionaryDataTest, RemovingWhatIsNotThereDoesNothing) {
  DictionaryData dictionary;
  dictionary.remove(DictionaryKey("a"));
  define(dictionary, "a", 1);
  dictionary.remove(DictionaryKey("b"));
  EXPECT_EQ(walk(dictionary), "a=1;");
}

// Thousands of definitions and removals agree with an ordered map.
TEST(DictionaryDataTest, AgreesWithAnOrderedMapUnderManyChanges) {
  DictionaryData dictionary;
  std::map<std::string, int> expected;
  std::uint32_t random = 1;
  for (int i = 0; i < 20000; ++i) {
    random = random * 1664525U + 1013904223U;
    const std::string key = "key" + std::to_string((random >> 16U) % 300U);
    if (((random >> 8U) & 3U) == 0) {
      dictionary.remove(DictionaryKey(key));
      expected.erase(key);
    } else {
      define(dictionary, key, i);
      expected[key] = i;
    }
  }
  std::string text;
  for (const auto& [key, value] : expected) text += key + "=" + std::to_string(value) + ";";
  EXPECT_EQ(walk(dictionary), text);
  for (int i = 0; i < 300; ++i) {
    const std::string key = "key" + std::to_string(i);
    EXPECT_EQ(dictionary.lookup(DictionaryKey(key)) != nullptr, expected.contains(key)) << key;
  }
}

// A walk after every few changes, and after very many: the order is mended, dropped and sorted again.
TEST(DictionaryDataTest, StaysInOrderWhenItChangesBetweenTheStepsOfAWalk) {
  DictionaryData dictionary;
  std::map<std::string, int> expected;
  std::uint32_t random = 1;
  for (int i = 0; i < 60000; ++i) {
    random = random * 1664525U + 1013904223U;
    const std::string key = "key" + std::to_string((random >> 16U) % 5000U);
    if (((random >> 8U) & 1U) == 0) {
      dictionary.remove(DictionaryKey(key));
      expected.erase(key);
    } else {
      define(dictionary, key, i);
      expected[key] = i;
    }
    const bool isInLongRunOfChanges = i % 20000 > 10000;
    if (isInLongRunOfChanges || i % 7 != 0 || expected.empty()) continue;
    const std::size_t position = random % expected.size();
    const auto& entry = dictionary.entryInOrder(position);
    const auto& [expectedKey, value] = *std::next(expected.begin(), static_cast<std::ptrdiff_t>(position));
    ASSERT_EQ(entry.key, expectedKey);
    ASSERT_EQ(entry.value->printString(), std::to_string(value));
  }
}

}  // namespace
}  // namespace quillpress
