#include "postscript/lib/operators/ArrayOperators.h"

#include <new>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// No job needs more slots at once. Beyond it the operator fails like an allocation that the system
// refuses, before the host process runs out of memory.
constexpr std::int32_t kMaxArrayLength = 1 << 24;

void checkLength(std::int32_t length) {
  if (length > kMaxArrayLength) throw std::bad_alloc();
}

}  // namespace

void ArrayOperator::execute(Interpreter& interpreter) {
  const std::int32_t length = interpreter.operandStack().pop<IntegerObject>(text)->value;
  checkLength(length);
  const Ref<ArrayObject> array = interpreter.memory().newArray();
  for (std::int32_t i = 0; i < length; ++i) array->elements().push(make<NullObject>());
  interpreter.operandStack().push(array);
}

void PackedarrayOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const std::int32_t length = operands.pop<IntegerObject>(text)->value;
  if (length < 0) THROW_EX("Illegal negative count passed to packedarray operator");
  while (static_cast<std::size_t>(length) > operands.count()) operands.pop();  // the empty stack throws
  const Ref<ArrayObject> array = interpreter.memory().newArray();
  for (std::int32_t i = length - 1; i >= 0; --i) array->elements().push(operands.peek(i));
  for (std::int32_t i = 0; i < length; ++i) operands.pop();
  operands.push(array);
}

void SetpackingOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().pop<BooleanObject>(text);
}

void CurrentpackingOperator::execute(Interpreter& interpreter) {
  interpreter.pushBoolean(true);
}

void AloadOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const auto array = operands.pop<ArrayObject>(text);
  const auto count = static_cast<std::ptrdiff_t>(array->count());
  for (std::ptrdiff_t i = 0; i < count; ++i) operands.push(array->element(i));
  operands.push(array);
}

void AstoreOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const auto array = operands.pop<ArrayObject>(text);
  for (auto i = static_cast<std::ptrdiff_t>(array->count()) - 1; i >= 0; --i)
    array->elements().put(i, operands.pop());
  operands.push(array);
}

}  // namespace quillpress
