#include "postscript/lib/operators/ArrayOperators.h"

#include <algorithm>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/base/MemoryProbe.h"

namespace quillpress {

namespace {

// Nulls have no value that could change, so many slots share one, which saves four fifths of the memory. Not
// all of them: the count of an object's holders is a 32-bit number.
constexpr std::int32_t kSlotsOfOneNull = 1 << 20;

void fillWithNulls(ObjectStack& elements, std::int32_t count) {
  probeMemory(static_cast<std::size_t>(count), sizeof(Ref<PostscriptObject>));
  elements.reserve(static_cast<std::size_t>(count));
  for (std::int32_t left = count; left > 0; left -= kSlotsOfOneNull) {
    const Ref<NullObject> null = make<NullObject>();
    for (std::int32_t i = std::min(left, kSlotsOfOneNull); i > 0; --i) elements.push(null);
  }
}

}  // namespace

void ArrayOperator::execute(Interpreter& interpreter) {
  const std::int32_t length = interpreter.operandStack().pop<IntegerObject>(text)->value;
  const Ref<ArrayObject> array = interpreter.memory().newArray();
  if (length > 0) fillWithNulls(array->elements(), length);
  interpreter.operandStack().push(array);
}

void PackedarrayOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const std::int32_t length = operands.pop<IntegerObject>(text)->value;
  if (length < 0) THROW_EX("Illegal negative count passed to packedarray operator");
  // Filling the array from the top takes what there is before it notices that there is too little.
  while (static_cast<std::size_t>(length) > operands.count()) operands.pop();  // the empty stack throws
  const Ref<ArrayObject> array = interpreter.memory().newArray();
  for (std::int32_t i = length - 1; i >= 0; --i) array->elements().push(operands.peek(i));
  for (std::int32_t i = 0; i < length; ++i) operands.pop();
  operands.push(array);
}

// There is one kind of array only, and currentpacking says what drivers want to hear.
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
