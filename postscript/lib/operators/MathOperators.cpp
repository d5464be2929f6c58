#include "postscript/lib/operators/MathOperators.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

constexpr std::int32_t kMostNegative = std::numeric_limits<std::int32_t>::min();

// Rejects the two divisions that a processor cannot make.
void checkDivision(std::int32_t dividend, std::int32_t divisor) {
  if (divisor == 0) THROW_EX("Division by zero");
  if (dividend == kMostNegative && divisor == -1) THROW_EX("Quotient out of range");
}

// The operators of one number: an integer stays an integer, a real a real.
template <typename OnInteger, typename OnReal>
void mapNumber(Interpreter& interpreter, const char* wrongTypeMessage, OnInteger onInteger, OnReal onReal) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> operand = operands.pop();
  if (const auto* number = as<IntegerObject>(operand)) {
    interpreter.pushInteger(onInteger(number->value));
  } else if (const auto* realNumber = as<RealObject>(operand)) {
    interpreter.pushReal(onReal(realNumber->value));
  } else {
    THROW_EX(wrongTypeMessage);
  }
}

std::int32_t unchanged(std::int32_t value) {
  return value;
}

// Through an integer, so that beyond 32 bits a real becomes the nearest bound.
// Kept: halves go away from zero, unlike the language's rule (math/round.ps).
double roundThroughInt32(double value) {
  return truncateToInt32(value > 0 ? value + 0.5 : value - 0.5);
}

}  // namespace

template <typename Operator>
void MathOperator::calculate(Operator& self, Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> b = operands.pop();
  const Ref<PostscriptObject> a = operands.pop();
  const auto* integerA = as<IntegerObject>(a);
  const auto* integerB = as<IntegerObject>(b);
  Number result;
  if (integerA != nullptr && integerB != nullptr) {
    intA = integerA->value;
    intB = integerB->value;
    result = self.calcInteger();
  } else {
    if (a->typeCode != TypeCode::kReal && b->typeCode != TypeCode::kReal)
      THROW_EX("Unsupported number type in calc");
    realA = toDouble(*a);
    realB = toDouble(*b);
    result = self.calcReal();
  }
  if (const auto* integer = std::get_if<std::int32_t>(&result)) {
    interpreter.pushInteger(*integer);
  } else {
    interpreter.pushReal(*std::get_if<double>(&result));
  }
}

void TrigOperator::calculate(Interpreter& interpreter) const {
  const Ref<PostscriptObject> degrees = interpreter.operandStack().pop();
  interpreter.pushReal(trig(toDouble(*degrees)));
}

inline Number AddOperator::calcReal() const {
  return realA + realB;
}
inline Number AddOperator::calcInteger() const {
  return wrappingAdd(intA, intB);
}
void AddOperator::execute(Interpreter& interpreter) {
  calculate(*this, interpreter);
}

inline Number SubOperator::calcReal() const {
  return realA - realB;
}
inline Number SubOperator::calcInteger() const {
  return wrappingSubtract(intA, intB);
}
void SubOperator::execute(Interpreter& interpreter) {
  calculate(*this, interpreter);
}

inline Number MulOperator::calcReal() const {
  return realA * realB;
}
inline Number MulOperator::calcInteger() const {
  return wrappingMultiply(intA, intB);
}
void MulOperator::execute(Interpreter& interpreter) {
  calculate(*this, interpreter);
}

inline Number DivOperator::calcReal() const {
  return realA / realB;
}
inline Number DivOperator::calcInteger() const {
  return static_cast<double>(intA) / static_cast<double>(intB);
}
void DivOperator::execute(Interpreter& interpreter) {
  calculate(*this, interpreter);
}

inline Number IdivOperator::calcReal() const {
  if (realB == 0.0) THROW_EX("Division by zero");
  return truncateToInt32(realA / realB);
}
inline Number IdivOperator::calcInteger() const {
  checkDivision(intA, intB);
  return intA / intB;
}
void IdivOperator::execute(Interpreter& interpreter) {
  calculate(*this, interpreter);
}

void ModOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> b = operands.pop();
  const Ref<PostscriptObject> a = operands.pop();
  const auto* divisor = as<IntegerObject>(b);
  const auto* dividend = as<IntegerObject>(a);
  if (divisor == nullptr || dividend == nullptr) THROW_EX("Illegal param types for mod operator");
  checkDivision(dividend->value, divisor->value);
  // Kept: the sign of the dividend is dropped (math/mod.ps).
  interpreter.pushInteger(std::abs(dividend->value % divisor->value));
}

void NegOperator::execute(Interpreter& interpreter) {
  mapNumber(
      interpreter, "Unsupported number type in neg", [](std::int32_t x) { return wrappingSubtract(0, x); },
      [](double x) { return x * -1.0; });
}

void AbsOperator::execute(Interpreter& interpreter) {
  mapNumber(
      interpreter, "Unsupported number type in abs",
      [](std::int32_t x) { return x >= 0 ? x : wrappingSubtract(0, x); },
      [](double x) { return x < 0 ? x * -1.0 : x; });
}

void CeilingOperator::execute(Interpreter& interpreter) {
  mapNumber(interpreter, "Unsupported number type in ceiling", unchanged,
            [](double x) { return std::ceil(x); });
}

void FloorOperator::execute(Interpreter& interpreter) {
  mapNumber(interpreter, "Unsupported number type in floor", unchanged,
            [](double x) { return std::floor(x); });
}

void RoundOperator::execute(Interpreter& interpreter) {
  mapNumber(interpreter, "Unsupported number type in round", unchanged, roundThroughInt32);
}

// The sign is the job's business; what comes of a negative operand is written as 0.
void SqrtOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  interpreter.pushReal(std::sqrt(toDouble(*operand)));
}

void AtanOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> denominator = operands.pop();
  const Ref<PostscriptObject> numerator = operands.pop();
  // The numerator is converted first, so of two wrong operands it gives the error.
  const double y = toDouble(*numerator);
  const double x = toDouble(*denominator);
  // Kept: the result is not brought into 0 to 360 (math/atan.ps).
  interpreter.pushReal(std::atan2(y, x) * 180.0 / kPi);
}

// In degrees, with the ten decimals of pi: the cosine of 90 is not quite 0, and rotations show it.
double CosOperator::trig(double degrees) const {
  return std::cos(degrees * kPi / 180.0);
}

double SinOperator::trig(double degrees) const {
  return std::sin(degrees * kPi / 180.0);
}

}  // namespace quillpress
