#include <cstring>
#include <string>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/ObjectText.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

// The number that is the first token of a string.
Object numberIn(Interpreter& interpreter, const Object& operand) {
  if (operand.isNumber()) return operand;
  requireReadable(operand);
  MemorySource source(bytesOf(textOf(operand)));
  Object token;
  if (!interpreter.scanner().scan(source, token)) raise(ErrorName::kSyntaxError);
  if (!token.isNumber()) raise(ErrorName::kTypeCheck);
  return token;
}

// num|string -> int
void cvi(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  const Object number = numberIn(interpreter, operand);
  if (number.isInteger()) {
    operand = number;
    return;
  }
  // 2^63, the first real that no integer holds.
  constexpr float kEdge = 9223372036854775808.0F;
  const float value = std::trunc(number.asReal());
  if (!(value >= -kEdge && value < kEdge)) raise(ErrorName::kRangeCheck);
  operand = Object::integer(static_cast<std::int64_t>(value));
}

// num|string -> real
void cvr(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  const Object number = numberIn(interpreter, operand);
  operand = number.isReal() ? number : realResult(number.asNumber());
}

// string -> name
void cvn(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  requireReadable(operand);
  Name* const name = interpreter.memory().internName(textOf(operand));
  operand = operand.isExecutable() ? Object::executableName(name) : Object::literalName(name);
}

// Writes the text into the string on top and leaves that part of it for `count` operands.
void writeInto(Interpreter& interpreter, std::string_view text, std::size_t count) {
  ObjectStack& operands = interpreter.operands();
  const Object target = operands.top();
  requireWritable(target);
  if (text.size() > target.length()) raise(ErrorName::kRangeCheck);
  if (!text.empty()) std::memcpy(target.bytes(), text.data(), text.size());
  operands.pop(count - 1);
  operands.top() = target.interval(0, static_cast<std::uint32_t>(text.size()));
}

// any string -> substring
void cvs(Interpreter& interpreter) {
  const Object& any = interpreter.operands().top(1);
  if (any.isString()) requireReadable(any);
  writeInto(interpreter, plainText(any), 2);
}

std::string inRadix(std::uint64_t value, unsigned radix) {
  constexpr std::string_view kDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  std::string digits;
  do {
    digits.insert(digits.begin(), kDigits[static_cast<std::size_t>(value % radix)]);
    value /= radix;
  } while (value != 0);
  return digits;
}

// num radix string -> substring
// In other radixes than 10 a number is taken as a whole one without a sign.
void cvrs(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  const Object& number = operands.top(2);
  const std::int64_t radix = operands.top(1).asInteger();
  if (radix < 2 || radix > 36) raise(ErrorName::kRangeCheck);
  if (radix == 10) {
    writeInto(interpreter, plainText(number), 3);
    return;
  }
  constexpr float kEdge = 9223372036854775808.0F;
  if (number.isReal() && !(number.asReal() >= -kEdge && number.asReal() < kEdge))
    raise(ErrorName::kRangeCheck);
  const std::int64_t value =
      number.isInteger() ? number.asInteger() : static_cast<std::int64_t>(number.asReal());
  writeInto(interpreter, inRadix(static_cast<std::uint64_t>(value), static_cast<unsigned>(radix)), 3);
}

constexpr OperatorRow kConversionOperators[] = {
    {"cvi", "num|string", cvi},
    {"cvr", "num|string", cvr},
    {"cvn", "string", cvn},
    {"cvs", "any string", cvs},
    {"cvrs", "count num int string", cvrs},
};

}  // namespace

void addConversionOperators(Interpreter& interpreter) {
  interpreter.addOperators(kConversionOperators);
}

}  // namespace quillpress::level3
