#include "postscript/lib/operators/BracketOperators.h"

#include <algorithm>
#include <vector>

namespace quillpress {

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
  interpreter.operandStack().push(make<MarkObject>());
}

void RightSquareBracketOperator::execute(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operandStack();
  // Popped one by one, as the field knows it: without a mark the whole stack is gone when the error
  // comes.
  std::vector<Ref<PostscriptObject>> topFirst;
  while (true) {
    Ref<PostscriptObject> object = operands.pop();
    if (as<MarkObject>(object) != nullptr) break;
    topFirst.push_back(std::move(object));
  }
  const Ref<ArrayObject> array = interpreter.memory().newArray();
  // One allocation instead of many: procedures that gather points make long arrays of them.
  array->elements().reserve(topFirst.size());
  std::for_each(topFirst.rbegin(), topFirst.rend(),
                [&](auto& object) { array->elements().push(std::move(object)); });
  operands.push(array);
}

}  // namespace quillpress
