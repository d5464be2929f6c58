#include "postscript/lib/operators/BracketOperators.h"

#include <optional>

namespace quillpress {

namespace {

// How many objects lie above the nearest mark; empty when there is none.
std::optional<std::size_t> countToMark(const ObjectStack& operands) {
  for (std::size_t depth = 0; depth < operands.count(); ++depth) {
    if (as<MarkObject>(operands.peek(static_cast<std::ptrdiff_t>(depth))) != nullptr) return depth;
  }
  return std::nullopt;
}

}  // namespace

// The loop sends every token into the procedure on top while one is there, so nothing else has to be
// noted.
void LeftCurlyBraceOperator::execute(Interpreter& interpreter) {
  interpreter.deferredStack().push(interpreter.memory().newProcedure());
}

// A brace without its opening one finds the stack empty and says so as any pop does.
void RightCurlyBraceOperator::execute(Interpreter& interpreter) {
  ObjectStack& deferred = interpreter.deferredStack();
  Ref<ArrayObject> finished = deferred.pop<ArrayObject>("Mark execute");
  if (auto* enclosing = as<ArrayObject>(deferred.peek(0))) {
    enclosing->elements().push(std::move(finished));
  } else {
    interpreter.operandStack().push(std::move(finished));
  }
}

void LeftSquareBracketOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(interpreter.memory().mark());
}

// As if the objects were popped one by one: without a mark the whole stack is gone when the error comes.
void RightSquareBracketOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  const auto count = countToMark(operands);
  if (!count) {
    operands.clear();
    operands.drop();  // throws
    return;
  }
  Ref<ArrayObject> array = interpreter.memory().newArray();
  operands.moveTop(*count, array->elements());
  operands.drop();
  operands.push(std::move(array));
}

}  // namespace quillpress
