#include "postscript/lib/operators/OutputOperators.h"

namespace quillpress {

void EqualsSignOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  interpreter.writeMessage(object->cvsString() + "\n");
}

void DoubleEqualsSignOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  interpreter.writeMessage(object->printString() + "\n");
}

void StackOperator::execute(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operandStack();
  const auto count = static_cast<std::ptrdiff_t>(operands.count());
  for (std::ptrdiff_t depth = 0; depth < count; ++depth) {
    interpreter.writeMessage(operands.peek(depth)->cvsString() + "\n");
  }
}

}  // namespace quillpress
