#include <algorithm>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// int -> array
void array(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = interpreter.memory().newArray(anyCountOf(operand));
}

// mark any0 ... anyN-1 -> array
void closeBracket(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t count = countToMark(interpreter);
  const Object made = interpreter.memory().newArray(operands.last(count));
  operands.pop(count);
  operands.top() = made;
}

// any0 ... anyN-1 n -> packedarray
void packedarray(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t count = anyCountOf(operands.top());
  if (count > operands.depth() - 1) raise(ErrorName::kStackUnderflow);
  const Object made = interpreter.memory().newPackedArray(operands.last(count + 1).first(count));
  operands.pop(count);
  operands.top() = made;
}

// array -> any0 ... anyN-1 array
void aload(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object array = operands.top();
  requireReadable(array);
  operands.require(array.length());
  operands.pop();
  for (const Object& element : elementsOf(array)) operands.push(element);
  operands.push(array);
}

// any0 ... anyN-1 array -> array
void astore(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object array = operands.top();
  requireWritable(array);
  if (array.length() > operands.depth() - 1) raise(ErrorName::kStackUnderflow);
  const std::span<Object> elements = operands.last(array.length() + 1).first(array.length());
  for (const Object& element : elements) VirtualMemory::checkStorable(*array.arrayStorage(), element);
  interpreter.memory().willChange(*array.arrayStorage());
  std::copy(elements.begin(), elements.end(), array.elements());
  operands.pop(array.length());
  operands.top() = array;
}

// bool ->
void setpacking(Interpreter& interpreter) {
  interpreter.scanner().setPacking(interpreter.operands().top().asBoolean());
  interpreter.operands().pop();
}

// -> bool
void currentpacking(Interpreter& interpreter) {
  interpreter.operands().push(Object::boolean(interpreter.scanner().isPacking()));
}

constexpr OperatorRow kArrayOperators[] = {
    {"array", "int", array},
    {"]", "", closeBracket},
    {"packedarray", "int", packedarray},
    {"aload", "array", aload},
    {"astore", "array", astore},
    {"setpacking", "bool", setpacking},
    {"currentpacking", "", currentpacking},
};

}  // namespace

void addArrayOperators(Interpreter& interpreter) {
  interpreter.addOperators(kArrayOperators);
}

}  // namespace quillpress::level3
