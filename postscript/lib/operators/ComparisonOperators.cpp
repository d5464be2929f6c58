#include "postscript/lib/operators/ComparisonOperators.h"

#include "postscript/lib/operators/Comparer.h"

namespace quillpress {

namespace {

template <typename Test>
void pushTestOfTwo(Interpreter& interpreter, Test test) {
  const Ref<PostscriptObject> b = interpreter.operandStack().pop();
  const Ref<PostscriptObject> a = interpreter.operandStack().pop();
  interpreter.pushBoolean(test(*a, *b));
}

template <typename Test>
void pushComparison(Interpreter& interpreter, Test test) {
  pushTestOfTwo(interpreter, [test](const auto& a, const auto& b) { return test(Comparer::compare(a, b)); });
}

}  // namespace

void EqOperator::execute(Interpreter& interpreter) {
  pushTestOfTwo(interpreter, Comparer::equals);
}

void NeOperator::execute(Interpreter& interpreter) {
  pushTestOfTwo(interpreter, [](const auto& a, const auto& b) { return !Comparer::equals(a, b); });
}

void GeOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result >= 0; });
}

void GtOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result > 0; });
}

void LeOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result <= 0; });
}

void LtOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result < 0; });
}

}  // namespace quillpress
