#include "postscript/lib/pdf/StateOperators.h"

namespace quillpress {

void GsaveOperator::execute(Interpreter& /*interpreter*/) {
  converter.content().append("q ");
  converter.pushStateCopy();
}

// Written also when there is nothing to restore, as the field has always seen it.
void GrestoreOperator::execute(Interpreter& /*interpreter*/) {
  converter.content().append("Q ");
  converter.popState();
}

// A save and a gsave in one; the number pushed is no object that restore would look at.
void SaveOperator::execute(Interpreter& interpreter) {
  interpreter.pushReal(0.0);
  converter.rememberSave();
  converter.content().append("q ");
  converter.pushStateCopy();
}

// The operand may be anything: jobs keep what save gave them in variables that they reuse.
void RestoreOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().pop();
  converter.restoreToSave();
}

// The caller begins pages, with its own matrix; the job's word for it comes too late for that.
void ShowpageOperator::execute(Interpreter& /*interpreter*/) {}

// The whole string, zeros included, unlike = and ==.
void PrintOperator::execute(Interpreter& interpreter) {
  interpreter.writeMessage(interpreter.popStringObject()->bytes());
}

}  // namespace quillpress
