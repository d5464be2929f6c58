#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// Frame: procedure, what is left of the array or string, operator.
void turnForallElements(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  Object& rest = execution.top(1);
  if (rest.length() == 0) {
    execution.pop(3);
    return;
  }
  interpreter.operands().push(rest.isString() ? Object::integer(*rest.bytes()) : *rest.elements());
  rest = rest.interval(1, rest.length() - 1);
  execution.push(Object(execution.top(2)));
}

// Frame: procedure, dictionary, index of the next entry, operator. Entries that the procedure removes are not
// met any more; those that it adds may be.
void turnForallEntries(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  const Dictionary& dictionary = *execution.top(2).asDictionary();
  auto index = static_cast<std::size_t>(execution.top(1).asInteger());
  while (index < dictionary.entryCount() && dictionary.entry(index).key.isNull()) ++index;
  if (index >= dictionary.entryCount()) {
    execution.pop(4);
    return;
  }
  interpreter.operands().require(2);
  interpreter.operands().push(dictionary.entry(index).key);
  interpreter.operands().push(dictionary.entry(index).value);
  execution.top(1) = Object::integer(static_cast<std::int64_t>(index + 1));
  execution.push(Object(execution.top(3)));
}

// array|dict|string proc ->
void forall(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ObjectStack& execution = interpreter.execution();
  const Object& composite = operands.top(1);
  requireReadable(composite);
  execution.require(5);
  execution.push(operands.top(0));
  execution.push(composite.asLiteral());
  if (composite.isDictionary()) {
    execution.push(Object::integer(0));
    execution.push(interpreter.internal(turnForallEntries));
  } else {
    execution.push(interpreter.internal(turnForallElements));
  }
  operands.pop(2);
}

constexpr OperatorRow kForallOperators[] = {{"forall", "array|dict|string proc", forall}};

}  // namespace

void addForallOperators(Interpreter& interpreter) {
  interpreter.addInternal("forall", turnForallElements, OperatorKind::kLoop, 3);
  interpreter.addInternal("forall", turnForallEntries, OperatorKind::kLoop, 4);
  interpreter.addOperators(kForallOperators);
}

}  // namespace quillpress::level3
