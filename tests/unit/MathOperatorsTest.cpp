#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "postscript/lib/operators/MathOperators.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

// The real that a text leaves on the stack, with all its digits, which no script shows.
double realOf(std::string_view text) {
  Interpreter interpreter;
  run(interpreter, text);
  const auto* real = as<RealObject>(interpreter.operandStack().peek(0));
  if (real == nullptr) throw std::logic_error("no real on the stack");
  return real->value;
}

TEST(MathOperatorsTest, AtanConvertsWithATenDigitPi) {
  EXPECT_DOUBLE_EQ(realOf("1 0 atan "), 90.00000000257238);
  EXPECT_DOUBLE_EQ(realOf("0 -1 atan "), 180.00000000514476);
  EXPECT_DOUBLE_EQ(realOf("-1 0 atan "), -90.00000000257238);
  EXPECT_EQ(realOf("0 1 atan "), 0.0);
  EXPECT_EQ(realOf("0 0 atan "), 0.0);
}

TEST(MathOperatorsTest, CosAndSinConvertWithATenDigitPi) {
  EXPECT_NEAR(realOf("90 cos "), 4.489659216976159e-11, 1e-20);
  EXPECT_NEAR(realOf("180 sin "), 8.979318433952318e-11, 1e-20);
  EXPECT_NEAR(realOf("60 cos "), 0.500000000025921, 1e-15);
}

TEST(MathOperatorsTest, RealsKeepAllTheirDigits) {
  EXPECT_EQ(realOf("0.1 0.2 add "), 0.1 + 0.2);
  EXPECT_EQ(realOf("0.3 0.1 sub "), 0.3 - 0.1);
  EXPECT_EQ(realOf("0.1 3 mul "), 0.1 * 3);
  EXPECT_EQ(realOf("1 3 div "), 1.0 / 3.0);
  EXPECT_EQ(realOf("2 sqrt "), std::sqrt(2.0));
  EXPECT_EQ(realOf("0.1 neg "), -0.1);
}

TEST(MathOperatorsTest, TheRootOfANegativeNumberIsNoNumber) {
  EXPECT_TRUE(std::isnan(realOf("-1 sqrt ")));
  EXPECT_TRUE(std::isnan(realOf("-0.5 sqrt ")));
}

TEST(MathOperatorsTest, ZeroByZeroIsNoNumber) {
  EXPECT_TRUE(std::isnan(realOf("0 0 div ")));
  EXPECT_TRUE(std::isnan(realOf("0.0 0 div ")));
}

TEST(MathOperatorsTest, NoNumberStaysNoNumberWhereNothingIsConverted) {
  EXPECT_TRUE(std::isnan(realOf("-1 sqrt 1 add ")));
  EXPECT_TRUE(std::isnan(realOf("-1 sqrt abs ")));
  EXPECT_TRUE(std::isnan(realOf("-1 sqrt floor ")));
  EXPECT_TRUE(std::isnan(realOf("-1 sqrt ceiling ")));
}

TEST(MathOperatorsTest, RoundStaysAPositiveZero) {
  EXPECT_FALSE(std::signbit(realOf("-0.3 round ")));
}

TEST(MathOperatorsTest, AResultOnTheStackOutlivesAllThatFollow) {
  Interpreter interpreter;
  run(interpreter, "1 2 add 1000 { 5 6 add pop } repeat ");
  const auto* result = as<IntegerObject>(interpreter.operandStack().peek(0));
  ASSERT_NE(result, nullptr);
  EXPECT_EQ(result->value, 3);
}

TEST(MathOperatorsTest, TheOperatorsCarryTheirNames) {
  EXPECT_EQ(AddOperator().text, "add");
  EXPECT_EQ(SubOperator().text, "sub");
  EXPECT_EQ(MulOperator().text, "mul");
  EXPECT_EQ(DivOperator().text, "div");
  EXPECT_EQ(IdivOperator().text, "idiv");
  EXPECT_EQ(CosOperator().text, "cos");
  EXPECT_EQ(SinOperator().text, "sin");
}

}  // namespace
}  // namespace quillpress
