#include <gtest/gtest.h>

#include <limits>

#include "postscript/lib/objects/NumberUtils.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(NumberUtilsTest, ANumberIsADouble) {
  EXPECT_EQ(toDouble(RealObject(2.5)), 2.5);
  EXPECT_EQ(toDouble(IntegerObject(-2147483647 - 1)), -2147483648.0);
}

TEST(NumberUtilsTest, NothingElseIsADouble) {
  EXPECT_EQ(messageOf([] { toDouble(BooleanObject(true)); }), "Unsupported number type");
  EXPECT_EQ(messageOf([] { toDouble(NameObject("1")); }), "Unsupported number type");
  try {
    toDouble(NullObject());
    FAIL();
  } catch (const Ex& error) {
    EXPECT_TRUE(error.formatted().starts_with("[NumberUtils.cpp:")) << error.formatted();
  }
}

TEST(NumberUtilsTest, AddsInPlace) {
  IntegerObject integer(1);
  addXtoY(RealObject(2.7), integer);
  EXPECT_EQ(integer.value, 3);
  RealObject real(1);
  addXtoY(IntegerObject(2), real);
  EXPECT_EQ(real.value, 3.0);
}

TEST(NumberUtilsTest, AddingToNoNumberThrows) {
  BooleanObject boolean(true);
  EXPECT_THROW(addXtoY(IntegerObject(1), boolean), Ex);
  EXPECT_TRUE(boolean.value);
}

TEST(NumberUtilsTest, TruncationSaturates) {
  EXPECT_EQ(truncateToInt32(3.9), 3);
  EXPECT_EQ(truncateToInt32(-3.9), -3);
  EXPECT_EQ(truncateToInt32(2147483647.5), 2147483647);
  EXPECT_EQ(truncateToInt32(1e300), 2147483647);
  EXPECT_EQ(truncateToInt32(-2147483648.9), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(truncateToInt32(-std::numeric_limits<double>::infinity()),
            std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(truncateToInt32(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(NumberUtilsTest, ArithmeticWraps) {
  constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(wrappingAdd(2147483647, 1), kLeast);
  EXPECT_EQ(wrappingSubtract(kLeast, 1), 2147483647);
  EXPECT_EQ(wrappingMultiply(65536, 65536), 0);
  EXPECT_EQ(wrappingMultiply(kLeast, -1), kLeast);
}

TEST(NumberUtilsTest, ADecimalIntegerIsASignAndDigits) {
  EXPECT_EQ(parseDecimalInteger("42"), 42);
  EXPECT_EQ(parseDecimalInteger("+42"), 42);
  EXPECT_EQ(parseDecimalInteger("-2147483648"), -2147483647 - 1);
  EXPECT_EQ(parseDecimalInteger("-"), 0);
  EXPECT_EQ(parseDecimalInteger("+"), 0);
  EXPECT_EQ(parseDecimalInteger("2147483648"), std::nullopt);
  EXPECT_EQ(parseDecimalInteger("-2147483649"), std::nullopt);
  EXPECT_EQ(parseDecimalInteger("99999999999999999999999999"), std::nullopt);
  EXPECT_EQ(parseDecimalInteger(""), std::nullopt);
  EXPECT_EQ(parseDecimalInteger("4 2"), std::nullopt);
  EXPECT_EQ(parseDecimalInteger("--1"), std::nullopt);
}

TEST(NumberUtilsTest, ARadixIntegerWrapsUpToThirtyTwoBits) {
  EXPECT_EQ(parseRadixInteger("16#FF"), 255);
  EXPECT_EQ(parseRadixInteger("8#777"), 511);
  EXPECT_EQ(parseRadixInteger("16#FFFFFFFF"), -1);
  EXPECT_EQ(parseRadixInteger("16#100000000"), std::nullopt);
  EXPECT_EQ(parseRadixInteger("2#102"), std::nullopt);
  EXPECT_EQ(parseRadixInteger("1#0"), std::nullopt);
  EXPECT_EQ(parseRadixInteger("37#0"), std::nullopt);
  EXPECT_EQ(parseRadixInteger("8#"), std::nullopt);
  EXPECT_EQ(parseRadixInteger("16#"), std::nullopt);
  EXPECT_EQ(parseRadixInteger(std::string_view("16#1\0", 5)), std::nullopt);
}

TEST(NumberUtilsTest, ARealIsUsedUpWhole) {
  EXPECT_EQ(parseReal("1e-5"), 1e-5);
  EXPECT_EQ(parseReal("+.5"), 0.5);
  EXPECT_EQ(parseReal("5."), 5.0);
  EXPECT_EQ(parseReal("-1.5E+2"), -150.0);
  EXPECT_EQ(parseReal("1e400"), std::nullopt);
  EXPECT_EQ(parseReal("1.5x"), std::nullopt);
  EXPECT_EQ(parseReal("+-1"), std::nullopt);
  EXPECT_EQ(parseReal("inf"), std::nullopt);
  EXPECT_EQ(parseReal("nan"), std::nullopt);
  EXPECT_EQ(parseReal(""), std::nullopt);
  EXPECT_EQ(parseReal("."), std::nullopt);
}

TEST(NumberUtilsTest, PiHasTenDecimals) {
  EXPECT_EQ(kPi, 3.1415926535);
}

}  // namespace
}  // namespace quillpress
