#include "postscript/lib/operators/LogicalOperators.h"

#include <functional>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

// Works on two booleans or on the bits of two integers; `operation` serves both.
template <typename Operation>
void combine(Interpreter& interpreter, const char* wrongTypeMessage, Operation operation) {
  const Ref<PostscriptObject> b = interpreter.operandStack().pop();
  const Ref<PostscriptObject> a = interpreter.operandStack().pop();
  const auto* booleanA = as<BooleanObject>(a);
  const auto* booleanB = as<BooleanObject>(b);
  const auto* integerA = as<IntegerObject>(a);
  const auto* integerB = as<IntegerObject>(b);
  if (booleanA != nullptr && booleanB != nullptr) {
    interpreter.pushBoolean(operation(booleanA->value ? 1 : 0, booleanB->value ? 1 : 0) != 0);
  } else if (integerA != nullptr && integerB != nullptr) {
    interpreter.pushInteger(operation(integerA->value, integerB->value));
  } else {
    THROW_EX(wrongTypeMessage);
  }
}

}  // namespace

void NotOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  if (const auto* boolean = as<BooleanObject>(operand)) {
    interpreter.pushBoolean(!boolean->value);
  } else if (const auto* integer = as<IntegerObject>(operand)) {
    // Kept: an integer is negated, not complemented, so `5 not` is -5 (logic/not.ps).
    interpreter.pushInteger(wrappingSubtract(0, integer->value));
  } else {
    THROW_EX("Unsupported type of param to not");
  }
}

void AndOperator::execute(Interpreter& interpreter) {
  combine(interpreter, "Unsupported type of param to and", std::bit_and<std::int32_t>());
}

void OrOperator::execute(Interpreter& interpreter) {
  combine(interpreter, "Unsupported type of param to or", std::bit_or<std::int32_t>());
}

void XOrOperator::execute(Interpreter& interpreter) {
  combine(interpreter, "Unsupported type of param to xor", std::bit_xor<std::int32_t>());
}

void TrueOperator::execute(Interpreter& interpreter) {
  interpreter.pushBoolean(true);
}

void FalseOperator::execute(Interpreter& interpreter) {
  interpreter.pushBoolean(false);
}

void NullOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(make<NullObject>());
}

}  // namespace quillpress
