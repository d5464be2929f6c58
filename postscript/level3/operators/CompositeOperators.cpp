#include "postscript/level3/operators/CompositeCopy.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// array|dict|string|name -> int
void length(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  std::size_t length = 0;
  if (operand.isName()) {
    length = operand.asName()->length;
  } else {
    requireReadable(operand);
    length = operand.isDictionary() ? operand.asDictionary()->length() : operand.length();
  }
  operand = Object::integer(static_cast<std::int64_t>(length));
}

Object dictionaryValue(Interpreter& interpreter, const Object& dictionary, const Object& key) {
  const Object* const value = dictionary.asDictionary()->find(interpreter.memory().keyOf(key));
  if (value == nullptr) raise(ErrorName::kUndefined);
  return *value;
}

// array|dict|string index|key -> any
void get(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& composite = operands.top(1);
  const Object& key = operands.top(0);
  requireReadable(composite);
  Object value;
  if (composite.isDictionary()) {
    value = dictionaryValue(interpreter, composite, key);
  } else {
    if (!key.isInteger()) raise(ErrorName::kTypeCheck);
    const std::uint32_t index = indexOf(key, composite.length());
    value = composite.isString() ? Object::integer(composite.bytes()[index]) : composite.elements()[index];
  }
  operands.pop();
  operands.top() = value;
}

std::uint8_t byteOf(const Object& value) {
  if (!value.isInteger()) raise(ErrorName::kTypeCheck);
  if (value.asInteger() < 0 || value.asInteger() > 255) raise(ErrorName::kRangeCheck);
  return static_cast<std::uint8_t>(value.asInteger());
}

// array|dict|string index|key any ->
void put(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& composite = operands.top(2);
  const Object& key = operands.top(1);
  const Object& value = operands.top(0);
  requireWritable(composite);
  if (composite.isDictionary()) {
    interpreter.memory().put(*composite.asDictionary(), key, value);
  } else {
    if (!key.isInteger()) raise(ErrorName::kTypeCheck);
    const std::uint32_t index = indexOf(key, composite.length());
    if (composite.isString()) {
      composite.bytes()[index] = byteOf(value);
    } else {
      interpreter.memory().setElement(composite, index, value);
    }
  }
  operands.pop(3);
}

// array|string index count -> array|string
void getinterval(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& composite = operands.top(2);
  requireReadable(composite);
  const std::size_t start = countOf(operands.top(1), composite.length());
  const std::size_t count = countOf(operands.top(0), composite.length() - start);
  const Object part =
      composite.interval(static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(count));
  operands.pop(2);
  operands.top() = part;
}

// array1|string1 index array2|string2 ->
void putinterval(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& target = operands.top(2);
  const Object& source = operands.top(0);
  if (target.isString() != source.isString()) raise(ErrorName::kTypeCheck);
  requireWritable(target);
  requireReadable(source);
  const std::size_t start = countOf(operands.top(1), target.length());
  if (source.length() > target.length() - start) raise(ErrorName::kRangeCheck);
  copyElements(interpreter.memory(), source,
               target.interval(static_cast<std::uint32_t>(start), source.length()));
  operands.pop(3);
}

constexpr OperatorRow kCompositeOperators[] = {
    {"length", "array|dict|string|name", length},
    {"get", "array|dict|string any", get},
    {"put", "array|dict|string any any", put},
    {"getinterval", "count array|string int int", getinterval},
    {"putinterval", "count array|string int array|string", putinterval},
};

}  // namespace

void addCompositeOperators(Interpreter& interpreter) {
  interpreter.addOperators(kCompositeOperators);
}

}  // namespace quillpress::level3
