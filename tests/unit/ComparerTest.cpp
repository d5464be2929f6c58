#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "postscript/lib/operators/ComparisonOperators.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

std::int32_t compareIntegers(std::int32_t a, std::int32_t b) {
  return Comparer::compare(*make<IntegerObject>(a), *make<IntegerObject>(b));
}

std::int32_t compareNames(const std::string& a, const std::string& b) {
  return Comparer::compare(*make<NameObject>(a), *make<NameObject>(b));
}

std::int32_t compareStrings(const std::string& a, const std::string& b) {
  MemorySet memory;
  return Comparer::compare(*memory.newString(a), *memory.newString(b));
}

TEST(ComparerTest, IntegersGiveTheirDifference) {
  EXPECT_EQ(compareIntegers(5, 3), 2);
  EXPECT_EQ(compareIntegers(-5, 3), -8);
  EXPECT_EQ(compareIntegers(7, 7), 0);
}

TEST(ComparerTest, TheDifferenceOfIntegersWraps) {
  EXPECT_EQ(compareIntegers(kMax, -1), kMin);
  EXPECT_EQ(compareIntegers(kMin, 1), kMax);
}

TEST(ComparerTest, RealsGiveMinusOneZeroOrOne) {
  EXPECT_EQ(Comparer::compare(*make<RealObject>(7.5), *make<RealObject>(1.5)), 1);
  EXPECT_EQ(Comparer::compare(*make<RealObject>(1.5), *make<RealObject>(7.5)), -1);
  EXPECT_EQ(Comparer::compare(*make<RealObject>(-0.0), *make<RealObject>(0.0)), 0);
}

TEST(ComparerTest, AnIntegerIsWidenedBesideAReal) {
  EXPECT_EQ(Comparer::compare(*make<RealObject>(7.5), *make<IntegerObject>(1)), 1);
  EXPECT_EQ(Comparer::compare(*make<IntegerObject>(1), *make<RealObject>(7.5)), -1);
  EXPECT_EQ(Comparer::compare(*make<IntegerObject>(kMax), *make<RealObject>(2147483646.5)), 1);
}

TEST(ComparerTest, TextsGiveMinusOneZeroOrOne) {
  EXPECT_EQ(compareStrings("z", "a"), 1);
  EXPECT_EQ(compareStrings("a", "z"), -1);
  EXPECT_EQ(compareStrings("a", "abcdef"), -1);
  EXPECT_EQ(compareStrings("", ""), 0);
  EXPECT_EQ(compareNames("z", "a"), 1);
  EXPECT_EQ(compareNames("a", "z"), -1);
}

TEST(ComparerTest, BytesOfTextsAreUnsigned) {
  EXPECT_EQ(compareStrings("\x80", "\x7f"), 1);
  EXPECT_EQ(compareNames("\x80", "\x7f"), 1);
}

TEST(ComparerTest, TextsEndAtTheirFirstZeroByte) {
  EXPECT_EQ(compareStrings(std::string("ab\0x", 4), "ab"), 0);
  EXPECT_EQ(compareNames(std::string("ab\0x", 4), std::string("ab\0y", 4)), 0);
}

TEST(ComparerTest, BooleansGiveTheirDifference) {
  EXPECT_EQ(Comparer::compare(*make<BooleanObject>(true), *make<BooleanObject>(false)), 1);
  EXPECT_EQ(Comparer::compare(*make<BooleanObject>(false), *make<BooleanObject>(true)), -1);
}

TEST(ComparerTest, AnIntegerBeforeABooleanIsComparedWithItsNumber) {
  EXPECT_EQ(Comparer::compare(*make<IntegerObject>(5), *make<BooleanObject>(true)), 4);
  EXPECT_EQ(Comparer::compare(*make<IntegerObject>(0), *make<BooleanObject>(true)), -1);
}

TEST(ComparerTest, ABooleanBeforeAnIntegerIsComparedInReverse) {
  EXPECT_EQ(Comparer::compare(*make<BooleanObject>(true), *make<IntegerObject>(5)), 4);
  EXPECT_EQ(Comparer::compare(*make<BooleanObject>(false), *make<IntegerObject>(-5)), -5);
}

TEST(ComparerTest, OtherPairsThrow) {
  EXPECT_EQ(messageOf([] { Comparer::compare(*make<NullObject>(), *make<NullObject>()); }),
            "Unsupported type comparison");
  EXPECT_EQ(messageOf([] { Comparer::compare(*make<RealObject>(1), *make<BooleanObject>(true)); }),
            "Unsupported type comparison");
}

TEST(ComparerTest, OnlyNullEqualsNull) {
  EXPECT_TRUE(Comparer::equals(*make<NullObject>(), *make<NullObject>()));
  EXPECT_FALSE(Comparer::equals(*make<NullObject>(), *make<IntegerObject>(0)));
  EXPECT_FALSE(Comparer::equals(*make<MarkObject>(), *make<NullObject>()));
}

TEST(ComparerTest, AnArrayOfManyLevelsEndsInAnException) {
  MemorySet memory;
  Ref<ArrayObject> outer = memory.newArray();
  for (int level = 0; level < 10000; ++level) {
    Ref<ArrayObject> array = memory.newArray();
    array->elements().push(outer);
    outer = array;
  }
  EXPECT_NE(messageOf([&] { Comparer::equals(*outer, *outer); }), "");
}

TEST(ComparerTest, ADictionaryIsWalkedEvenBesideItself) {
  MemorySet memory;
  const Ref<DictionaryObject> dictionary = memory.newDictionary();
  dictionary->define("mark", make<MarkObject>());
  EXPECT_EQ(messageOf([&] { Comparer::equals(*dictionary, *dictionary); }), "Unsupported type comparison");
}

TEST(ComparerTest, ADictionaryThatHoldsItselfEndsInAnException) {
  MemorySet memory;
  const Ref<DictionaryObject> dictionary = memory.newDictionary();
  dictionary->define("self", dictionary);
  EXPECT_EQ(messageOf([&] { Comparer::equals(*dictionary, *dictionary); }),
            "Structures nested too deeply to compare");
}

TEST(ComparerTest, TwoDictionariesThatHoldThemselvesEndInAnAnswer) {
  MemorySet memory;
  const Ref<DictionaryObject> a = memory.newDictionary();
  const Ref<DictionaryObject> b = memory.newDictionary();
  a->define("other", b);
  b->define("other", a);
  EXPECT_NE(messageOf([&] { Comparer::equals(*a, *b); }), "");
}

TEST(ComparerTest, ArraysWithSharedPartsAreGivenUpInTheEnd) {
  Interpreter interpreter;
  EXPECT_EQ(messageOf([&] {
              run(interpreter,
                  "/a [1] def /b [1] def 5 {8 {/a [a a] def /b [b b] def} repeat} repeat a b eq ");
            }),
            "Structures nested too deeply to compare");
}

}  // namespace
}  // namespace quillpress
