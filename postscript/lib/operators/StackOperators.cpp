#include "postscript/lib/operators/StackOperators.h"

#include <algorithm>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

void copyTopObjects(ObjectStack& operands, std::int32_t count) {
  if (count < 0) THROW_EX("Illegal negative count passed to copy operator");
  // Before anything is pushed, so that a failed copy leaves the stack alone.
  if (static_cast<std::size_t>(count) > operands.count()) THROW_EX("object not on stack");
  for (std::int32_t i = 0; i < count; ++i) operands.push(operands.peek(count - 1));
}

void copyArray(const ArrayObject& source, ArrayObject& destination) {
  if (destination.count() < source.count()) THROW_EX("array too short for copy operator");
  const auto count = static_cast<std::ptrdiff_t>(source.count());
  for (std::ptrdiff_t i = 0; i < count; ++i) destination.elements().put(i, source.element(i));
}

void copyDictionary(const DictionaryObject& source, DictionaryObject& destination) {
  // A dictionary must not change under the walk over it.
  if (source.sharesPayloadWith(destination)) return;
  for (std::size_t i = 0; i < source.count(); ++i) {
    const DictionaryData::Entry& entry = source.entryInOrder(i);
    destination.define(entry.key, entry.value);
  }
}

void copyString(const StringObject& source, StringObject& destination) {
  if (source.sharesPayloadWith(destination)) return;
  if (destination.length() < source.length()) THROW_EX("string too short for copy operator");
  std::ranges::copy(source.bytes(), destination.data().writableBytes().begin());
}

// Copies the elements, entries or bytes of one composite into another of the same kind. Throws Ex when
// the kinds differ, are no composites, or when the destination is too short.
void copyComposite(const PostscriptObject& source, PostscriptObject& destination) {
  if (source.typeCode != destination.typeCode) THROW_EX("expected parms to be the same for copy operator");
  if (const auto* array = as<ArrayObject>(&source)) {
    copyArray(*array, static_cast<ArrayObject&>(destination));
  } else if (const auto* dictionary = as<DictionaryObject>(&source)) {
    copyDictionary(*dictionary, static_cast<DictionaryObject&>(destination));
  } else if (const auto* string = as<StringObject>(&source)) {
    copyString(*string, static_cast<StringObject&>(destination));
  } else {
    THROW_EX("unsupported copy type");
  }
}

}  // namespace

void PopOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().drop();
}

void ExchOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  while (operands.count() < 2) operands.pop();  // takes what is there, then the empty stack throws
  operands.exchangeTop();
}

void DupOperator::execute(Interpreter& interpreter) {
  // A clone, not the object: a handle of its own on the same value, with its own flag and position.
  const PostscriptObject* top = interpreter.operandStack().peek(0);
  if (top == nullptr) THROW_EX("dup - expected item on stack");
  interpreter.operandStack().push(interpreter.memory().newClone(*top));
}

void CopyOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  Ref<PostscriptObject> top = operands.pop();
  if (const auto* count = as<IntegerObject>(top)) {
    copyTopObjects(operands, count->value);
    return;
  }
  const Ref<PostscriptObject> source = operands.pop();
  copyComposite(*source, *top);
  operands.push(std::move(top));
}

void IndexOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> operand = operands.pop();
  const auto* depth = as<IntegerObject>(operand);
  if (depth == nullptr) THROW_EX("Illegal param type passed to index operator");
  const PostscriptObject* indexed = operands.peek(depth->value);
  if (indexed == nullptr) THROW_EX("Indexed object not on stack");
  operands.push(interpreter.memory().newClone(*indexed));
}

void RollOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const Ref<PostscriptObject> amountOperand = operands.pop();
  const Ref<PostscriptObject> sizeOperand = operands.pop();
  const auto* amount = as<IntegerObject>(amountOperand);
  const auto* size = as<IntegerObject>(sizeOperand);
  if (amount == nullptr || size == nullptr) THROW_EX("Illegal param type passed to roll operator");
  if (size->value < 0) THROW_EX("Illegal negative count passed to roll operator");
  if (size->value == 0) return;
  const auto rolled = static_cast<std::size_t>(size->value);
  while (rolled > operands.count()) operands.pop();  // takes what is there, then the empty stack throws
  // The remainder has the sign of the amount, and either way gives how far from the deepest the new
  // deepest is.
  const std::int32_t remainder = amount->value % size->value;
  operands.rotateTop(rolled, static_cast<std::size_t>(remainder > 0 ? size->value - remainder : -remainder));
}

void ClearOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().clear();
}

void CountOperator::execute(Interpreter& interpreter) {
  interpreter.pushInteger(static_cast<std::int32_t>(interpreter.operandStack().count()));
}

void MarkOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(interpreter.memory().mark());
}

// Down to the nearest mark only, since marks nest.
void CleartomarkOperator::execute(Interpreter& interpreter) {
  while (as<MarkObject>(interpreter.operandStack().pop()) == nullptr) {
  }
}

void CounttomarkOperator::execute(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operandStack();
  std::int32_t count = 0;
  // Kept: the walk ends at the bottom as well, so a missing mark is no error (stack/counttomark.ps).
  for (const PostscriptObject* object = operands.peek(0);
       object != nullptr && as<MarkObject>(object) == nullptr;) {
    object = operands.peek(++count);
  }
  interpreter.pushInteger(count);
}

}  // namespace quillpress
