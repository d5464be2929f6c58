#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/ObjectText.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

void write(Interpreter& interpreter, std::string_view text) {
  if (!interpreter.output().write(bytesOf(text))) raise(ErrorName::kIoError);
}

// string ->
void print(Interpreter& interpreter) {
  const Object& string = interpreter.operands().top();
  requireReadable(string);
  write(interpreter, textOf(string));
  interpreter.operands().pop();
}

// any ->
void showPlain(Interpreter& interpreter) {
  write(interpreter, plainText(interpreter.operands().top()) + "\n");
  interpreter.operands().pop();
}

// any ->
void showSyntax(Interpreter& interpreter) {
  write(interpreter, syntaxText(interpreter.operands().top()) + "\n");
  interpreter.operands().pop();
}

// any1 ... anyN -> any1 ... anyN
void stack(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  for (std::size_t i = 0; i < operands.depth(); ++i) write(interpreter, plainText(operands.top(i)) + "\n");
}

// any1 ... anyN -> any1 ... anyN
void pstack(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  for (std::size_t i = 0; i < operands.depth(); ++i) write(interpreter, syntaxText(operands.top(i)) + "\n");
}

// ->
void flush(Interpreter& interpreter) {
  if (!interpreter.output().flush()) raise(ErrorName::kIoError);
}

constexpr OperatorRow kOutputOperators[] = {
    {"print", "string", print}, {"=", "any", showPlain}, {"==", "any", showSyntax},
    {"stack", "", stack},       {"pstack", "", pstack},  {"flush", "", flush},
};

}  // namespace

void addOutputOperators(Interpreter& interpreter) {
  interpreter.addOperators(kOutputOperators);
}

}  // namespace quillpress::level3
