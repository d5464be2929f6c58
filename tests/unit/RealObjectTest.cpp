#include <gtest/gtest.h>

#include <limits>

#include "postscript/lib/objects/RealObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(RealObjectTest, AddsAReal) {
  RealObject sum(1.5);
  sum.add(RealObject(-0.25));
  EXPECT_EQ(sum.value, 1.25);
}

TEST(RealObjectTest, AddsAnIntegerAsADouble) {
  RealObject sum(0.5);
  sum.add(IntegerObject(2147483647));
  EXPECT_EQ(sum.value, 2147483647.5);
}

TEST(RealObjectTest, AddsNothingElse) {
  RealObject sum(1.5);
  EXPECT_EQ(messageOf([&] { sum.add(BooleanObject(true)); }), "Unsupported number type for adding");
  EXPECT_EQ(messageOf([&] { sum.add(NullObject()); }), "Unsupported number type for adding");
  EXPECT_EQ(sum.value, 1.5);
}

TEST(RealObjectTest, TheErrorNamesItsSource) {
  try {
    RealObject(1).add(NullObject());
    FAIL();
  } catch (const Ex& error) {
    EXPECT_TRUE(error.formatted().starts_with("[RealObject.cpp:")) << error.formatted();
  }
}

TEST(RealObjectTest, PrintsSixDecimalsWhateverItsSize) {
  EXPECT_EQ(RealObject(1.5).printString(), "1.500000");
  EXPECT_EQ(RealObject(-0.0000004).printString(), "-0.000000");
  EXPECT_EQ(RealObject(1234567.0625).printString(), "1234567.062500");
  EXPECT_EQ(RealObject(std::numeric_limits<double>::max()).printString().size(), 309U + 7U);
  EXPECT_EQ(RealObject(std::numeric_limits<double>::infinity()).printString(), "inf");
}

}  // namespace
}  // namespace quillpress
