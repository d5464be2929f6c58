#include "postscript/lib/operators/OutputOperators.h"

namespace quillpress {

// One text a line, so that a message output that adds line ends of its own stays readable.
void EqualsSignOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  interpreter.writeMessage(object->cvsString() + "\n");
}

// The text that shows what kind of object it is, brackets and all.
void DoubleEqualsSignOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  interpreter.writeMessage(object->printString() + "\n");
}

void StackOperator::execute(Interpreter& interpreter) {
  // From the top, as a person at a prompt wants to see it.
  const ObjectStack& operands = interpreter.operandStack();
  const auto count = static_cast<std::ptrdiff_t>(operands.count());
  for (std::ptrdiff_t depth = 0; depth < count; ++depth) {
    interpreter.writeMessage(operands.peek(depth)->cvsString() + "\n");
  }
}

}  // namespace quillpress
