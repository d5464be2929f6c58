#include <algorithm>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// any ->
void exec(Interpreter& interpreter) {
  const Object object = interpreter.operands().top();
  if (object.isExecutable()) {
    if (object.isComposite() && !object.isDictionary() && object.access() == Access::kNone) {
      raise(ErrorName::kInvalidAccess);
    }
    interpreter.execution().push(object);
    interpreter.operands().pop();
  }
}

// bool proc ->
void ifTrue(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  if (operands.top(1).asBoolean()) interpreter.execution().push(operands.top());
  operands.pop(2);
}

// bool proc1 proc2 ->
void ifElse(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  interpreter.execution().push(operands.top(operands.top(2).asBoolean() ? 1 : 0));
  operands.pop(3);
}

// ->
void exit(Interpreter& interpreter) {
  interpreter.exitLoop();
}
void stop(Interpreter& interpreter) {
  interpreter.stop();
}
void quit(Interpreter& interpreter) {
  interpreter.quit();
}

// any -> bool
void stopped(Interpreter& interpreter) {
  interpreter.runStopped(interpreter.operands().top());
  interpreter.operands().pop();
}

// -> int
void countexecstack(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(static_cast<std::int64_t>(interpreter.execution().depth())));
}

// array -> subarray
void execstack(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object array = operands.top();
  requireWritable(array);
  const std::span<Object> frames = interpreter.execution().all();
  if (frames.size() > array.length()) raise(ErrorName::kRangeCheck);
  for (const Object& frame : frames) VirtualMemory::checkStorable(*array.arrayStorage(), frame);
  interpreter.memory().willChange(*array.arrayStorage());
  std::copy(frames.begin(), frames.end(), array.elements());
  operands.top() = array.interval(0, static_cast<std::uint32_t>(frames.size()));
}

constexpr OperatorRow kControlOperators[] = {
    {"exec", "any", exec},
    {"if", "bool proc", ifTrue},
    {"ifelse", "bool proc proc", ifElse},
    {"exit", "", exit},
    {"stop", "", stop},
    {"stopped", "any", stopped},
    {"quit", "", quit},
    {"countexecstack", "", countexecstack},
    {"execstack", "array", execstack},
};

}  // namespace

void addControlOperators(Interpreter& interpreter) {
  interpreter.addOperators(kControlOperators);
}

}  // namespace quillpress::level3
