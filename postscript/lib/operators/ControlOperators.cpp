#include "postscript/lib/operators/ControlOperators.h"

#include <algorithm>
#include <array>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// Kept: stopped is none of them, so exit passes through it and takes it away (control/exit.ps).
constexpr std::array<std::string_view, 9> kLoopNames{
    "cshow", "forall", "pathforall", "filenameforall", "kshow", "repeat", "for", "loop", "resourceforall"};

// By the name alone: the continuation of a loop is an object of the operator's class, and some of these
// loops have no class of their own. A name that a job left there counts as well.
bool isLoop(const NameObject& name) {
  return std::ranges::find(kLoopNames, name.text) != kLoopNames.end();
}

bool isStopped(const NameObject& name) {
  return name.text == "stopped";
}

// Takes everything off the execution stack down to the first name that passes the test. Procedures on
// the way are retired, so that they start afresh the next time.
template <typename Test>
void unwindTo(ObjectStack& executions, Test isTarget) {
  while (true) {
    const Ref<PostscriptObject> object = executions.pop();
    const auto* name = as<NameObject>(object);
    if (name != nullptr && isTarget(*name)) return;
    auto* array = as<ArrayObject>(object);
    // Otherwise the procedure would go on in its middle when its name is executed again.
    if (array != nullptr && array->isProcedure()) array->retire();
  }
}

}  // namespace

void IfOperator::execute(Interpreter& interpreter) {
  // Any object will do: one that is literal is pushed when its turn comes.
  const Ref<PostscriptObject> procedure = interpreter.operandStack().pop();
  const auto condition = interpreter.operandStack().pop<BooleanObject>(text);
  if (condition->value) interpreter.start(procedure);
}

void IfelseOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> whenFalse = interpreter.operandStack().pop();
  const Ref<PostscriptObject> whenTrue = interpreter.operandStack().pop();
  const auto condition = interpreter.operandStack().pop<BooleanObject>(text);
  interpreter.start(condition->value ? whenTrue : whenFalse);
}

// An exit without a loop takes everything down and fails: what was running is gone.
void ExitOperator::execute(Interpreter& interpreter) {
  unwindTo(interpreter.executionStack(), isLoop);
}

void StopOperator::execute(Interpreter& interpreter) {
  unwindTo(interpreter.executionStack(), isStopped);
  interpreter.pushBoolean(true);
}

void StoppedOperator::execute(Interpreter& interpreter) {
  // Kept: an Ex is not caught; it leaves this on the execution stack for the next chunk (control/stopped.ps).
  if (guarded_) {  // the continuation: what it ran has come to its end
    interpreter.pushBoolean(false);
    return;
  }
  // The operator that the name finds is shared by all its uses, so each gets an object of its own.
  const auto continuation = make<StoppedOperator>();
  continuation->guarded_ = interpreter.operandStack().pop();
  interpreter.executionStack().push(continuation);
  const auto* array = as<ArrayObject>(continuation->guarded_);
  const bool isProcedure = array != nullptr && array->isProcedure();
  const bool isName = continuation->guarded_->typeCode == TypeCode::kName;
  // The continuation is on the stack by now and stays there; its time comes with the next chunk.
  if (!isProcedure && !isName) THROW_EX("Unsupported param type to stopped");
  interpreter.start(continuation->guarded_);
}

void ExecOperator::execute(Interpreter& interpreter) {
  Ref<PostscriptObject> object = interpreter.operandStack().pop();
  if (auto* array = as<ArrayObject>(object)) array->startIfProcedure();
  if (!object->executable) {
    interpreter.operandStack().push(std::move(object));
  } else if (object->typeCode == TypeCode::kString) {
    THROW_EX("Does not currently support execing a string");
  } else {
    interpreter.executionStack().push(std::move(object));
  }
}

// Popped, unlike the operand of cvx: the answer takes its place.
void XcheckOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  interpreter.pushBoolean(object->executable);
}

// In place: whoever holds the object sees it executable from now on, a procedure's body included.
void CvxOperator::execute(Interpreter& interpreter) {
  PostscriptObject* top = interpreter.operandStack().peek(0);
  if (top == nullptr) THROW_EX("cvx - expected item on stack");
  top->executable = true;
}

}  // namespace quillpress
