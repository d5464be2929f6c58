#include <algorithm>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// int -> dict
void dict(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = interpreter.memory().newDictionary(anyCountOf(operand));
}

// mark key1 value1 ... keyN valueN -> dict
void closeDictionary(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t count = countToMark(interpreter);
  if (count % 2 != 0) raise(ErrorName::kRangeCheck);
  VirtualMemory& memory = interpreter.memory();
  const Object made = memory.newDictionary(count / 2);
  const std::span<Object> pairs = operands.last(count);
  for (std::size_t i = 0; i < count; i += 2) {
    // Of equal keys the first counts: as if the pairs were taken off the stack one by one, each with `def`.
    const bool isNew = made.asDictionary()->find(memory.keyOf(pairs[i])) == nullptr;
    if (isNew) memory.put(*made.asDictionary(), pairs[i], pairs[i + 1]);
  }
  operands.pop(count);
  operands.top() = made;
}

// dict -> int
void maxlength(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  requireReadable(operand);
  operand = Object::integer(static_cast<std::int64_t>(operand.asDictionary()->maxLength()));
}

// dict ->
void begin(Interpreter& interpreter) {
  const Object& dictionary = interpreter.operands().top();
  requireReadable(dictionary);
  interpreter.dictionaries().begin(dictionary.asDictionary());
  interpreter.operands().pop();
}

// ->
void end(Interpreter& interpreter) {
  interpreter.dictionaries().end();
}

// key value ->
void def(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  Dictionary& current = *interpreter.dictionaries().top();
  if (!current.isWritable()) raise(ErrorName::kInvalidAccess);
  interpreter.memory().put(current, operands.top(1), operands.top(0));
  operands.pop(2);
}

// A key as dictionaries keep it. Throws typecheck for null, which is no key.
Object keyOperand(Interpreter& interpreter, const Object& key) {
  if (key.isNull()) raise(ErrorName::kTypeCheck);
  return interpreter.memory().keyOf(key);
}

// key -> value
void load(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  const Object key = keyOperand(interpreter, operand);
  const Object* value = nullptr;
  if (key.isName()) {
    value = interpreter.dictionaries().find(key.asName());
  } else if (Dictionary* const dictionary = interpreter.dictionaries().where(key)) {
    value = dictionary->find(key);
  }
  if (value == nullptr) raise(ErrorName::kUndefined);
  operand = *value;
}

// key value ->
void store(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object key = keyOperand(interpreter, operands.top(1));
  Dictionary* dictionary = interpreter.dictionaries().where(key);
  if (dictionary == nullptr) dictionary = interpreter.dictionaries().top();
  if (!dictionary->isWritable()) raise(ErrorName::kInvalidAccess);
  interpreter.memory().put(*dictionary, key, operands.top(0));
  operands.pop(2);
}

// dict key ->
void undef(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& dictionary = operands.top(1);
  requireWritable(dictionary);
  interpreter.memory().remove(*dictionary.asDictionary(), keyOperand(interpreter, operands.top(0)));
  operands.pop(2);
}

// dict key -> bool
void known(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& dictionary = operands.top(1);
  requireReadable(dictionary);
  const bool isKnown = dictionary.asDictionary()->find(keyOperand(interpreter, operands.top(0))) != nullptr;
  operands.pop();
  operands.top() = Object::boolean(isKnown);
}

// key -> dict true
// key -> false
void where(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(1);
  Dictionary* const dictionary = interpreter.dictionaries().where(keyOperand(interpreter, operands.top()));
  if (dictionary == nullptr) {
    operands.top() = Object::boolean(false);
    return;
  }
  if (!dictionary->isReadable()) raise(ErrorName::kInvalidAccess);
  operands.top() = Object::dictionary(dictionary);
  operands.push(Object::boolean(true));
}

// -> dict
void currentdict(Interpreter& interpreter) {
  interpreter.operands().push(Object::dictionary(interpreter.dictionaries().top()));
}

// -> int
void countdictstack(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(static_cast<std::int64_t>(interpreter.dictionaries().depth())));
}

// array -> subarray
void dictstack(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  const Object array = operand;
  requireWritable(array);
  const DictionaryStack& stack = interpreter.dictionaries();
  if (stack.depth() > array.length()) raise(ErrorName::kRangeCheck);
  for (std::size_t i = 0; i < stack.depth(); ++i) {
    interpreter.memory().setElement(array, static_cast<std::uint32_t>(i), Object::dictionary(stack.at(i)));
  }
  operand = array.interval(0, static_cast<std::uint32_t>(stack.depth()));
}

// ->
void cleardictstack(Interpreter& interpreter) {
  interpreter.dictionaries().clear();
}

constexpr OperatorRow kDictionaryOperators[] = {
    {"dict", "int", dict},
    {">>", "", closeDictionary},
    {"maxlength", "dict", maxlength},
    {"begin", "dict", begin},
    {"end", "", end},
    {"def", "any any", def},
    {"load", "any", load},
    {"store", "any any", store},
    {"undef", "dict any", undef},
    {"known", "dict any", known},
    {"where", "any", where},
    {"currentdict", "", currentdict},
    {"countdictstack", "", countdictstack},
    {"dictstack", "array", dictstack},
    {"cleardictstack", "", cleardictstack},
};

}  // namespace

void addDictionaryOperators(Interpreter& interpreter) {
  interpreter.addOperators(kDictionaryOperators);
  interpreter.define("systemdict", Object::dictionary(&interpreter.systemDictionary()));
  interpreter.define("globaldict", Object::dictionary(&interpreter.globalDictionary()));
  interpreter.define("userdict", Object::dictionary(&interpreter.userDictionary()));
}

}  // namespace quillpress::level3
