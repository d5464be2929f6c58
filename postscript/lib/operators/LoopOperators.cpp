#include "postscript/lib/operators/LoopOperators.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"
#include "postscript/lib/operators/ComparisonOperators.h"

namespace quillpress {

namespace {

bool isReal(const Ref<PostscriptObject>& object) {
  return object->typeCode == TypeCode::kReal;
}

// One real among the three makes the whole loop real, or the control value would lose the fractions.
Ref<PostscriptObject> realControl(const PostscriptObject& initial) {
  if (const auto* integer = as<IntegerObject>(&initial)) return make<RealObject>(integer->value);
  if (initial.typeCode == TypeCode::kReal) return initial.clone(0);
  THROW_EX("Unsupported number type in initial for loop value");
}

bool isAscending(const PostscriptObject& increment) {
  if (const auto* integer = as<IntegerObject>(&increment)) return integer->value >= 0;
  if (const auto* real = as<RealObject>(&increment)) return real->value >= 0;
  THROW_EX("Unsupported increment type in for loop");
}

}  // namespace

void ForOperator::execute(Interpreter& interpreter) {
  if (control_) {
    // The value that the procedure got was a clone, so this one can be changed in place.
    addXtoY(*increment_, *control_);
    step(interpreter);
    return;
  }
  const auto loop = make<ForOperator>();
  loop->takeOperands(interpreter.operandStack());
  loop->step(interpreter);
}

void ForOperator::takeOperands(ObjectStack& operands) {
  // All four before any is judged: an error then finds the stack as every other operator leaves it.
  procedure_ = operands.pop();
  limit_ = operands.pop();
  increment_ = operands.pop();
  initial_ = operands.pop();
  const bool anyReal = isReal(initial_) || isReal(increment_) || isReal(limit_);
  control_ = anyReal ? realControl(*initial_) : initial_->clone(0);
  ascending_ = isAscending(*increment_);
}

void ForOperator::step(Interpreter& interpreter) {
  const std::int32_t position = Comparer::compare(*control_, *limit_);
  const bool goesOn = ascending_ ? position < 0 : position > 0;
  // The continuation was taken off the stack to get here, so to end is not to push it again.
  if (!goesOn) return;
  interpreter.executionStack().push(this);
  interpreter.start(procedure_);
  interpreter.operandStack().push(interpreter.memory().newClone(*control_));
}

void ForallOperator::execute(Interpreter& interpreter) {
  if (composite_) {
    step(interpreter);
    return;
  }
  const auto loop = make<ForallOperator>();
  loop->procedure_ = interpreter.operandStack().pop();
  loop->composite_ = interpreter.operandStack().pop();
  loop->step(interpreter);
}

void ForallOperator::goOn(Interpreter& interpreter) {
  interpreter.executionStack().push(this);
  interpreter.start(procedure_);
  ++position_;
}

void ForallOperator::step(Interpreter& interpreter) {
  const auto position = static_cast<std::size_t>(position_);
  ObjectStack& operands = interpreter.operandStack();
  if (const auto* array = as<ArrayObject>(composite_)) {
    if (position >= array->count()) return;
    // Held, because the procedure may replace it in the array before its turn comes.
    Ref<PostscriptObject> element = array->element(position_);
    goOn(interpreter);
    operands.push(std::move(element));
  } else if (const auto* dictionary = as<DictionaryObject>(composite_)) {
    if (position >= dictionary->count()) return;
    // By position, so a dictionary that changes under the loop is walked as it is then.
    const DictionaryData::Entry& entry = dictionary->entryInOrder(position);
    const auto key = make<NameObject>(entry.key);
    key->executable = false;
    goOn(interpreter);
    operands.push(key);
    operands.push(entry.value);
  } else if (const auto* string = as<StringObject>(composite_)) {
    if (position >= string->length()) return;
    const auto byte = static_cast<signed char>(string->bytes()[position]);
    goOn(interpreter);
    interpreter.pushInteger(byte);
  } else {
    THROW_EX("Unsupported forall elements param");
  }
}

void LoopOperator::execute(Interpreter& interpreter) {
  // Only the first execution, under the operator's name, has no procedure yet.
  Ref<LoopOperator> loop = this;
  if (!procedure_) {
    loop = make<LoopOperator>();
    loop->procedure_ = interpreter.operandStack().pop();
  }
  interpreter.executionStack().push(loop);
  interpreter.start(loop->procedure_);
}

void RepeatOperator::execute(Interpreter& interpreter) {
  if (procedure_) {
    step(interpreter);
    return;
  }
  const auto loop = make<RepeatOperator>();
  // The count is wanted by its own name in the error, unlike the typed pops of the interpreter.
  loop->procedure_ = interpreter.operandStack().pop();
  loop->remaining_ = interpreter.operandStack().pop<IntegerObject>(text)->value;
  loop->step(interpreter);
}

void RepeatOperator::step(Interpreter& interpreter) {
  if (remaining_ <= 0) return;
  interpreter.executionStack().push(this);
  interpreter.start(procedure_);
  --remaining_;
}

}  // namespace quillpress
