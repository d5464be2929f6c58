#include <gtest/gtest.h>

#include <limits>

#include "postscript/lib/objects/IntegerObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(IntegerObjectTest, AddsAnInteger) {
  IntegerObject sum(5);
  sum.add(IntegerObject(-7));
  EXPECT_EQ(sum.value, -2);
}

TEST(IntegerObjectTest, AddingAnIntegerWraps) {
  IntegerObject sum(2147483647);
  sum.add(IntegerObject(1));
  EXPECT_EQ(sum.value, std::numeric_limits<std::int32_t>::min());
}

TEST(IntegerObjectTest, AddsARealTruncatedTowardZero) {
  IntegerObject sum(5);
  sum.add(RealObject(2.9));
  EXPECT_EQ(sum.value, 7);
  sum.add(RealObject(-2.9));
  EXPECT_EQ(sum.value, 5);
}

TEST(IntegerObjectTest, AddsARealBeyondItsRangeAsTheNearestBound) {
  IntegerObject sum(0);
  sum.add(RealObject(1e30));
  EXPECT_EQ(sum.value, 2147483647);
}

TEST(IntegerObjectTest, AddsNothingElse) {
  IntegerObject sum(5);
  EXPECT_EQ(messageOf([&] { sum.add(BooleanObject(true)); }),
            "Unsupported number type for IntegerObject adding");
  EXPECT_EQ(messageOf([&] { sum.add(NameObject("1")); }), "Unsupported number type for IntegerObject adding");
  EXPECT_EQ(sum.value, 5);
}

TEST(IntegerObjectTest, TheErrorNamesItsSource) {
  try {
    IntegerObject(1).add(NullObject());
    FAIL();
  } catch (const Ex& error) {
    EXPECT_TRUE(error.formatted().starts_with("[IntegerObject.cpp:")) << error.formatted();
  }
}

}  // namespace
}  // namespace quillpress
