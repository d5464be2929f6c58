#include <cmath>
#include <limits>
#include <numbers>

#include "postscript/level3/interpreter/Random.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

double degrees(double radians) {
  return radians * 180.0 / std::numbers::pi;
}

// num1 num2 -> sum
void add(Interpreter& interpreter) {
  const Object& a = interpreter.operands().top(1);
  const Object& b = interpreter.operands().top(0);
  std::int64_t sum = 0;
  const bool isExact =
      a.isInteger() && b.isInteger() && !__builtin_add_overflow(a.asInteger(), b.asInteger(), &sum);
  replaceTwo(interpreter, isExact ? Object::integer(sum) : realResult(a.asNumber() + b.asNumber()));
}

// num1 num2 -> difference
void sub(Interpreter& interpreter) {
  const Object& a = interpreter.operands().top(1);
  const Object& b = interpreter.operands().top(0);
  std::int64_t difference = 0;
  const bool isExact =
      a.isInteger() && b.isInteger() && !__builtin_sub_overflow(a.asInteger(), b.asInteger(), &difference);
  replaceTwo(interpreter, isExact ? Object::integer(difference) : realResult(a.asNumber() - b.asNumber()));
}

// num1 num2 -> product
void mul(Interpreter& interpreter) {
  const Object& a = interpreter.operands().top(1);
  const Object& b = interpreter.operands().top(0);
  std::int64_t product = 0;
  const bool isExact =
      a.isInteger() && b.isInteger() && !__builtin_mul_overflow(a.asInteger(), b.asInteger(), &product);
  replaceTwo(interpreter, isExact ? Object::integer(product) : realResult(a.asNumber() * b.asNumber()));
}

// num1 num2 -> quotient
void div(Interpreter& interpreter) {
  const double a = interpreter.operands().top(1).asNumber();
  const double b = interpreter.operands().top(0).asNumber();
  if (b == 0) raise(ErrorName::kUndefinedResult);
  replaceTwo(interpreter, realResult(a / b));
}

// int1 int2 -> quotient
void idiv(Interpreter& interpreter) {
  const std::int64_t a = interpreter.operands().top(1).asInteger();
  const std::int64_t b = interpreter.operands().top(0).asInteger();
  if (b == 0 || (a == kLeast && b == -1)) raise(ErrorName::kUndefinedResult);
  replaceTwo(interpreter, Object::integer(a / b));
}

// int1 int2 -> remainder
void mod(Interpreter& interpreter) {
  const std::int64_t a = interpreter.operands().top(1).asInteger();
  const std::int64_t b = interpreter.operands().top(0).asInteger();
  if (b == 0) raise(ErrorName::kUndefinedResult);
  replaceTwo(interpreter, Object::integer(b == -1 ? 0 : a % b));
}

// num -> |num|
void abs(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  if (number.isReal()) {
    number = Object::real(std::fabs(number.asReal()));
  } else if (number.asInteger() == kLeast) {
    number = Object::real(-static_cast<float>(kLeast));
  } else if (number.asInteger() < 0) {
    number = Object::integer(-number.asInteger());
  }
}

// num -> -num
void neg(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  if (number.isReal()) {
    number = Object::real(-number.asReal());
  } else if (number.asInteger() == kLeast) {
    number = Object::real(-static_cast<float>(kLeast));
  } else {
    number = Object::integer(-number.asInteger());
  }
}

// The functions that leave an integer alone.
template <float (*kFunction)(float)>
void roundWith(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  if (number.isReal()) number = Object::real(kFunction(number.asReal()));
}

float up(float value) {
  return std::ceil(value);
}
float down(float value) {
  return std::floor(value);
}
float towardsZero(float value) {
  return std::trunc(value);
}
// A half goes up, so -6.5 becomes -6. In double precision, where adding a half is exact.
float toNearest(float value) {
  return static_cast<float>(std::floor(static_cast<double>(value) + 0.5));
}

// num -> root
void sqrt(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  if (number.asNumber() < 0) raise(ErrorName::kRangeCheck);
  number = realResult(std::sqrt(number.asNumber()));
}

// numerator denominator -> angle from 0 to 360
void atan(Interpreter& interpreter) {
  const double y = interpreter.operands().top(1).asNumber();
  const double x = interpreter.operands().top(0).asNumber();
  if (x == 0 && y == 0) raise(ErrorName::kUndefinedResult);
  double angle = degrees(std::atan2(y, x));
  if (angle < 0) angle += 360;
  replaceTwo(interpreter, realResult(angle));
}

// The sine at multiples of 90 degrees is exact: programs count on it.
double sineOfDegrees(double angle) {
  const double turned = std::fmod(angle, 360.0);
  if (std::fmod(turned, 90.0) == 0) {
    const int quarter = (static_cast<int>(turned / 90.0) + 4) % 4;
    constexpr double kSines[] = {0, 1, 0, -1};
    return kSines[quarter];
  }
  return std::sin(turned * std::numbers::pi / 180.0);
}

// angle -> sine
void sin(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  number = realResult(sineOfDegrees(number.asNumber()));
}

// angle -> cosine
void cos(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  number = realResult(sineOfDegrees(std::fmod(number.asNumber(), 360.0) + 90.0));
}

// base exponent -> power
void exp(Interpreter& interpreter) {
  const double base = interpreter.operands().top(1).asNumber();
  const double exponent = interpreter.operands().top(0).asNumber();
  if (base == 0 && exponent <= 0 && exponent != 0) raise(ErrorName::kUndefinedResult);
  if (base < 0 && exponent != std::trunc(exponent)) raise(ErrorName::kUndefinedResult);
  replaceTwo(interpreter, realResult(std::pow(base, exponent)));
}

// num -> natural logarithm
void ln(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  if (number.asNumber() <= 0) raise(ErrorName::kRangeCheck);
  number = realResult(std::log(number.asNumber()));
}

// num -> common logarithm
void log(Interpreter& interpreter) {
  Object& number = interpreter.operands().top();
  if (number.asNumber() <= 0) raise(ErrorName::kRangeCheck);
  number = realResult(std::log10(number.asNumber()));
}

// -> int
void rand(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().push(Object::integer(interpreter.random().next()));
}

// int ->
void srand(Interpreter& interpreter) {
  interpreter.random().seed(interpreter.operands().top().asInteger());
  interpreter.operands().pop();
}

// -> int
void rrand(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(interpreter.random().state()));
}

constexpr OperatorRow kArithmeticOperators[] = {
    {"add", "num num", add},
    {"sub", "num num", sub},
    {"mul", "num num", mul},
    {"div", "num num", div},
    {"idiv", "int int", idiv},
    {"mod", "int int", mod},
    {"abs", "num", abs},
    {"neg", "num", neg},
    {"ceiling", "num", roundWith<up>},
    {"floor", "num", roundWith<down>},
    {"round", "num", roundWith<toNearest>},
    {"truncate", "num", roundWith<towardsZero>},
    {"sqrt", "num", sqrt},
    {"atan", "num num", atan},
    {"sin", "num", sin},
    {"cos", "num", cos},
    {"exp", "num num", exp},
    {"ln", "num", ln},
    {"log", "num", log},
    {"rand", "", rand},
    {"srand", "int", srand},
    {"rrand", "", rrand},
};

}  // namespace

void addArithmeticOperators(Interpreter& interpreter) {
  interpreter.addOperators(kArithmeticOperators);
}

}  // namespace quillpress::level3
