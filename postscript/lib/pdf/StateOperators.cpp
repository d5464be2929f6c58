#include "postscript/lib/pdf/StateOperators.h"

namespace quillpress {

void GsaveOperator::execute(Interpreter& /*interpreter*/) {
  converter.content().append("q ");
  converter.pushStateCopy();
}

void GrestoreOperator::execute(Interpreter& /*interpreter*/) {
  converter.content().append("Q ");
  converter.popState();
}

void SaveOperator::execute(Interpreter& interpreter) {
  interpreter.pushReal(0.0);
  converter.rememberSave();
  converter.content().append("q ");
  converter.pushStateCopy();
}

void RestoreOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().pop();
  converter.restoreToSave();
}

void ShowpageOperator::execute(Interpreter& /*interpreter*/) {}

void PrintOperator::execute(Interpreter& interpreter) {
  interpreter.writeMessage(interpreter.popStringObject()->bytes());
}

}  // namespace quillpress
