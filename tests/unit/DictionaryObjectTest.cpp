#include <gtest/gtest.h>

#include "postscript/lib/objects/DictionaryObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

class DictionaryObjectTest : public testing::Test {
 protected:
  VirtualMemoryObject area{"Local Memory"};
};

TEST_F(DictionaryObjectTest, NamesAndStringsAreOneKey) {
  const auto dictionary = make<DictionaryObject>(area);
  dictionary->define(NameObject("k"), make<IntegerObject>(1));
  dictionary->define(StringObject(area, std::string("k\0rest", 6)), make<IntegerObject>(2));
  EXPECT_EQ(dictionary->count(), 1U);
  EXPECT_EQ(dictionary->lookup("k")->printString(), "2");
}

TEST_F(DictionaryObjectTest, AnyOtherKeyIsItsDescription) {
  EXPECT_EQ(keyText(IntegerObject(5)), "ps_integer 5");
  EXPECT_EQ(keyText(RealObject(1.5)), "ps_real 1.500000");
  EXPECT_EQ(keyText(BooleanObject(true)), "ps_boolean true");
  EXPECT_EQ(keyText(NullObject()), "ps_null");
  EXPECT_EQ(keyText(MarkObject()), "ps_mark");
  EXPECT_EQ(keyText(ArrayObject(area, '[')), "ps_array, size=0");
  EXPECT_EQ(keyText(DictionaryObject(area, "Font")), "ps_dictionary Font  0 entries (ps_save Local Memory)");
  EXPECT_EQ(keyText(area), "ps_save Local Memory");
}

TEST_F(DictionaryObjectTest, AnIntegerKeyNeverMeetsTheNameOfItsDigits) {
  const auto dictionary = make<DictionaryObject>(area);
  dictionary->define(IntegerObject(5), make<IntegerObject>(1));
  EXPECT_EQ(dictionary->lookup(NameObject("5")), nullptr);
  EXPECT_NE(dictionary->lookup(IntegerObject(5)), nullptr);
  EXPECT_NE(dictionary->lookup("ps_integer 5"), nullptr);
}

TEST_F(DictionaryObjectTest, AHandleOnTheSameEntriesIsNoCopyOfThem) {
  const auto dictionary = make<DictionaryObject>(area);
  const Ref<PostscriptObject> handle = dictionary->clone(0);
  dictionary->define("a", make<IntegerObject>(5));
  EXPECT_EQ(static_cast<DictionaryObject&>(*handle).count(), 1U);
}

TEST_F(DictionaryObjectTest, DeletingTheLastHandleLeavesTheEntriesWithTheArea) {
  const auto value = make<IntegerObject>(5);
  auto dictionary = make<DictionaryObject>(area);
  dictionary->define("a", value);
  dictionary = nullptr;
  EXPECT_EQ(value->refCount, 2);
}

}  // namespace
}  // namespace quillpress
