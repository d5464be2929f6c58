#include <cstdlib>

#include "postscript/level3/operators/Equality.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// any1 any2 -> bool
void eq(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  replaceTwo(interpreter, Object::boolean(areEqual(operands.top(1), operands.top(0))));
}

// any1 any2 -> bool
void ne(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  replaceTwo(interpreter, Object::boolean(!areEqual(operands.top(1), operands.top(0))));
}

// Less than 0, 0 or greater than 0. Two numbers or two strings.
int compare(const Object& a, const Object& b) {
  if (a.isInteger() && b.isInteger())
    return a.asInteger() < b.asInteger() ? -1 : a.asInteger() > b.asInteger();
  if (a.isNumber() && b.isNumber()) return a.asNumber() < b.asNumber() ? -1 : a.asNumber() > b.asNumber();
  if (!a.isString() || !b.isString()) raise(ErrorName::kTypeCheck);
  requireReadable(a);
  requireReadable(b);
  return textOf(a).compare(textOf(b));
}

// num1|string1 num2|string2 -> bool
template <bool (*kHolds)(int order)>
void compareWith(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  replaceTwo(interpreter, Object::boolean(kHolds(compare(operands.top(1), operands.top(0)))));
}

bool isGreater(int order) {
  return order > 0;
}
bool isAtLeast(int order) {
  return order >= 0;
}
bool isLess(int order) {
  return order < 0;
}
bool isAtMost(int order) {
  return order <= 0;
}

// bool1|int1 bool2|int2 -> bool|int
template <std::int64_t (*kCombine)(std::int64_t, std::int64_t)>
void combineWith(Interpreter& interpreter) {
  const Object& a = interpreter.operands().top(1);
  const Object& b = interpreter.operands().top(0);
  if (a.type() != b.type()) raise(ErrorName::kTypeCheck);
  if (a.isInteger()) {
    replaceTwo(interpreter, Object::integer(kCombine(a.asInteger(), b.asInteger())));
  } else {
    replaceTwo(interpreter, Object::boolean(kCombine(a.asBoolean() ? 1 : 0, b.asBoolean() ? 1 : 0) != 0));
  }
}

std::int64_t both(std::int64_t a, std::int64_t b) {
  return a & b;
}
std::int64_t either(std::int64_t a, std::int64_t b) {
  return a | b;
}
std::int64_t oneOf(std::int64_t a, std::int64_t b) {
  return a ^ b;
}

// bool|int -> bool|int
void logicalNot(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand =
      operand.isInteger() ? Object::integer(~operand.asInteger()) : Object::boolean(!operand.asBoolean());
}

// int shift -> int
// To the right, copies of the sign come in, as everywhere today.
void bitshift(Interpreter& interpreter) {
  const std::int64_t value = interpreter.operands().top(1).asInteger();
  const std::int64_t shift = interpreter.operands().top(0).asInteger();
  constexpr std::int64_t kWidth = 64;
  std::int64_t shifted = 0;
  if (shift >= 0 && shift < kWidth)
    shifted = static_cast<std::int64_t>(static_cast<std::uint64_t>(value) << shift);
  if (shift < 0 && shift > -kWidth) shifted = value >> -shift;
  replaceTwo(interpreter, Object::integer(shifted));
}

constexpr OperatorRow kRelationalOperators[] = {
    {"eq", "any any", eq},
    {"ne", "any any", ne},
    {"gt", "count num|string num|string", compareWith<isGreater>},
    {"ge", "num|string num|string", compareWith<isAtLeast>},
    {"lt", "num|string num|string", compareWith<isLess>},
    {"le", "count num|string num|string", compareWith<isAtMost>},
    {"and", "bool|int bool|int", combineWith<both>},
    {"or", "bool|int bool|int", combineWith<either>},
    {"xor", "bool|int bool|int", combineWith<oneOf>},
    {"not", "bool|int", logicalNot},
    {"bitshift", "int int", bitshift},
};

}  // namespace

void addRelationalOperators(Interpreter& interpreter) {
  interpreter.addOperators(kRelationalOperators);
  interpreter.define("true", Object::boolean(true));
  interpreter.define("false", Object::boolean(false));
  interpreter.define("null", Object::null());
}

}  // namespace quillpress::level3
