#include "postscript/lib/pdf/DeviceOperators.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// Screens, transfer functions and flatness are matters of a device; the PDF viewer has its own.
void dropOperands(Interpreter& interpreter, int count) {
  for (int i = 0; i < count; ++i) interpreter.operandStack().pop();
}

// One by one, so that the first that is none gives the error and those behind it stay.
void dropProcedures(Interpreter& interpreter, int count, const char* wrongTypeMessage) {
  for (int i = 0; i < count; ++i) {
    const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
    const auto* procedure = as<ArrayObject>(operand);
    if (procedure == nullptr || !(procedure->isProcedure() || procedure->executable))
      THROW_EX(wrongTypeMessage);
  }
}

// Jobs put what they get back, or build procedures around it; an empty one does no harm.
void pushEmptyProcedures(Interpreter& interpreter, int count) {
  for (int i = 0; i < count; ++i) interpreter.operandStack().push(interpreter.memory().newProcedure());
}

}  // namespace

void SetscreenOperator::execute(Interpreter& interpreter) {
  dropOperands(interpreter, 3);
}

// Frequency, angle and spot function for each of four colours.
void SetcolorscreenOperator::execute(Interpreter& interpreter) {
  dropOperands(interpreter, 12);
}

void SethalftoneOperator::execute(Interpreter& interpreter) {
  dropOperands(interpreter, 1);
}

void CurrenthalftoneOperator::execute(Interpreter& interpreter) {
  const Ref<DictionaryObject> halftone = interpreter.memory().newDictionary();
  // The entries that jobs ask for before they set a screen.
  halftone->define("HalftoneType", make<IntegerObject>(1));
  halftone->define("Frequency", make<RealObject>(0.0));
  halftone->define("Angle", make<RealObject>(0.0));
  interpreter.operandStack().push(halftone);
}

void SettransferOperator::execute(Interpreter& interpreter) {
  dropProcedures(interpreter, 1, "Illegal param type to settransfer");
}

void CurrenttransferOperator::execute(Interpreter& interpreter) {
  pushEmptyProcedures(interpreter, 1);
}

void SetcolortransferOperator::execute(Interpreter& interpreter) {
  dropProcedures(interpreter, 4, "Illegal param type to setcolortransfer");
}

void CurrentcolortransferOperator::execute(Interpreter& interpreter) {
  pushEmptyProcedures(interpreter, 4);
}

void SetflatOperator::execute(Interpreter& interpreter) {
  dropOperands(interpreter, 1);
}

void CurrentflatOperator::execute(Interpreter& interpreter) {
  interpreter.pushReal(0.0);
}

void SetstrokeadjustOperator::execute(Interpreter& interpreter) {
  dropOperands(interpreter, 1);
}

void CurrentstrokeadjustOperator::execute(Interpreter& interpreter) {
  interpreter.pushBoolean(false);
}

void SetoverprintOperator::execute(Interpreter& interpreter) {
  dropOperands(interpreter, 1);
}

void CurrentoverprintOperator::execute(Interpreter& interpreter) {
  interpreter.pushBoolean(false);
}

}  // namespace quillpress
