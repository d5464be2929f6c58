#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

// A loop keeps a frame on the execution stack: its procedure, what it counts, and an internal operator that
// makes the next turn by pushing the procedure above the frame, or takes the frame away.

namespace quillpress::level3 {

namespace {

// Frame: procedure, operator.
void turnLoop(Interpreter& interpreter) {
  interpreter.execution().push(Object(interpreter.execution().top(1)));
}

// proc ->
void loop(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  execution.require(3);
  execution.push(interpreter.operands().top());
  execution.push(interpreter.internal(turnLoop));
  interpreter.operands().pop();
}

// Frame: procedure, turns left, operator.
void turnRepeat(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  Object& left = execution.top(1);
  if (left.asInteger() == 0) {
    execution.pop(3);
    return;
  }
  left = Object::integer(left.asInteger() - 1);
  execution.push(Object(execution.top(2)));
}

// int proc ->
void repeat(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ObjectStack& execution = interpreter.execution();
  if (operands.top(1).asInteger() < 0) raise(ErrorName::kRangeCheck);
  execution.require(4);
  execution.push(operands.top(0));
  execution.push(operands.top(1));
  execution.push(interpreter.internal(turnRepeat));
  operands.pop(2);
}

// Frame: procedure, limit, increment, next value, operator.
void turnForInteger(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  Object& next = execution.top(1);
  const std::int64_t value = next.asInteger();
  const std::int64_t increment = execution.top(2).asInteger();
  const std::int64_t limit = execution.top(3).asInteger();
  if (increment >= 0 ? value > limit : value < limit) {
    execution.pop(5);
    return;
  }
  interpreter.operands().push(next);
  std::int64_t following = 0;
  if (__builtin_add_overflow(value, increment, &following)) {
    // Beyond the largest integer there is no further turn: the limit is set where this one was the last.
    execution.top(3) = Object::integer(increment >= 0 ? value - 1 : value + 1);
    following = value;
  }
  next = Object::integer(following);
  execution.push(Object(execution.top(4)));
}

// The values are added up in single precision, one by one.
void turnForReal(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  Object& next = execution.top(1);
  const float value = next.asReal();
  const float increment = execution.top(2).asReal();
  const float limit = execution.top(3).asReal();
  if (increment >= 0 ? value > limit : value < limit) {
    execution.pop(5);
    return;
  }
  interpreter.operands().push(next);
  next = Object::real(value + increment);
  execution.push(Object(execution.top(4)));
}

Object asReal(const Object& number) {
  return Object::real(static_cast<float>(number.asNumber()));
}

// A limit for integers: what lies beyond a fraction does not matter.
Object asLimit(const Object& number) {
  if (number.isInteger()) return number;
  constexpr float kEdge = 9e18F;
  const float value = std::floor(number.asReal());
  if (value >= kEdge) return Object::integer(INT64_MAX);
  // No number is one that nothing reaches either.
  if (!(value > -kEdge)) return Object::integer(INT64_MIN);
  return Object::integer(static_cast<std::int64_t>(value));
}

// initial increment limit proc ->
void forLoop(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ObjectStack& execution = interpreter.execution();
  execution.require(6);
  const Object& initial = operands.top(3);
  const Object& increment = operands.top(2);
  const Object& limit = operands.top(1);
  // A loop that gets nowhere is not begun.
  if (increment.asNumber() == 0) return operands.pop(4);
  const bool isInteger = initial.isInteger() && increment.isInteger();
  // With a negative step, a fraction in the limit ends the loop one earlier than its floor does.
  const bool countsDown = isInteger && increment.asInteger() < 0 && limit.isReal();
  execution.push(operands.top(0));
  if (isInteger) {
    execution.push(asLimit(countsDown ? Object::real(std::ceil(limit.asReal())) : limit));
    execution.push(increment);
    execution.push(initial);
    execution.push(interpreter.internal(turnForInteger));
  } else {
    execution.push(asReal(limit));
    execution.push(asReal(increment));
    execution.push(asReal(initial));
    execution.push(interpreter.internal(turnForReal));
  }
  operands.pop(4);
}

constexpr OperatorRow kLoopOperators[] = {
    {"loop", "proc", loop},
    {"repeat", "int proc", repeat},
    {"for", "count num num num proc", forLoop},
};

}  // namespace

void addLoopOperators(Interpreter& interpreter) {
  interpreter.addInternal("loop", turnLoop, OperatorKind::kLoop, 2);
  interpreter.addInternal("repeat", turnRepeat, OperatorKind::kLoop, 3);
  interpreter.addInternal("for", turnForInteger, OperatorKind::kLoop, 5);
  interpreter.addInternal("for", turnForReal, OperatorKind::kLoop, 5);
  interpreter.addOperators(kLoopOperators);
}

}  // namespace quillpress::level3
