#include "postscript/lib/operators/MathOperators.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

constexpr std::int32_t kMostNegative = std::numeric_limits<std::int32_t>::min();

Ref<PostscriptObject> integer(std::int32_t value) {
  return make<IntegerObject>(value);
}

Ref<PostscriptObject> real(double value) {
  return make<RealObject>(value);
}

// Rejects the two divisions that a processor cannot make.
void checkDivision(std::int32_t dividend, std::int32_t divisor) {
  if (divisor == 0) THROW_EX("Division by zero");
  if (dividend == kMostNegative && divisor == -1) THROW_EX("Quotient out of range");
}

// The operators of one number: an integer stays an integer, a real a real.
template <typename OnInteger, typename OnReal>
void mapNumber(Interpreter& interpreter, const char* wrongTypeMessage, OnInteger onInteger, OnReal onReal) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
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

// Kept: halves go away from zero, unlike the language's rule.
double roundThroughInt32(double value) {
  return truncateToInt32(value > 0 ? value + 0.5 : value - 0.5);
}

}  // namespace

void MathOperator::calculate(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> b = operands.pop();
  const Ref<PostscriptObject> a = operands.pop();
  if (a->typeCode != TypeCode::kReal && b->typeCode != TypeCode::kReal) {
    const auto* integerA = as<IntegerObject>(a);
    const auto* integerB = as<IntegerObject>(b);
    if (integerA == nullptr || integerB == nullptr) THROW_EX("Unsupported number type in calc");
    intA = integerA->value;
    intB = integerB->value;
    operands.push(calcInteger());
  } else {
    realA = toDouble(*a);
    realB = toDouble(*b);
    operands.push(calcReal());
  }
}

void TrigOperator::calculate(Interpreter& interpreter) const {
  const Ref<PostscriptObject> degrees = interpreter.operandStack().pop();
  interpreter.pushReal(trig(toDouble(*degrees)));
}

Ref<PostscriptObject> AddOperator::calcReal() const {
  return real(realA + realB);
}
Ref<PostscriptObject> AddOperator::calcInteger() const {
  return integer(wrappingAdd(intA, intB));
}

Ref<PostscriptObject> SubOperator::calcReal() const {
  return real(realA - realB);
}
Ref<PostscriptObject> SubOperator::calcInteger() const {
  return integer(wrappingSubtract(intA, intB));
}

Ref<PostscriptObject> MulOperator::calcReal() const {
  return real(realA * realB);
}
Ref<PostscriptObject> MulOperator::calcInteger() const {
  return integer(wrappingMultiply(intA, intB));
}

Ref<PostscriptObject> DivOperator::calcReal() const {
  return real(realA / realB);
}
Ref<PostscriptObject> DivOperator::calcInteger() const {
  return real(static_cast<double>(intA) / static_cast<double>(intB));
}

Ref<PostscriptObject> IdivOperator::calcReal() const {
  if (realB == 0.0) THROW_EX("Division by zero");
  return integer(truncateToInt32(realA / realB));
}
Ref<PostscriptObject> IdivOperator::calcInteger() const {
  checkDivision(intA, intB);
  return integer(intA / intB);
}

void ModOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> b = operands.pop();
  const Ref<PostscriptObject> a = operands.pop();
  const auto* divisor = as<IntegerObject>(b);
  const auto* dividend = as<IntegerObject>(a);
  if (divisor == nullptr || dividend == nullptr) THROW_EX("Illegal param types for mod operator");
  checkDivision(dividend->value, divisor->value);
  // Kept: the sign of the dividend is dropped.
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

void SqrtOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  interpreter.pushReal(std::sqrt(toDouble(*operand)));
}

void AtanOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> denominator = operands.pop();
  const Ref<PostscriptObject> numerator = operands.pop();
  const double y = toDouble(*numerator);
  const double x = toDouble(*denominator);
  // Kept: the result is not brought into 0 to 360.
  interpreter.pushReal(std::atan2(y, x) * 180.0 / kPi);
}

double CosOperator::trig(double degrees) const {
  return std::cos(degrees * kPi / 180.0);
}

double SinOperator::trig(double degrees) const {
  return std::sin(degrees * kPi / 180.0);
}

}  // namespace quillpress
