#include "postscript/level3/operators/LanguageOperators.h"

namespace quillpress::level3 {

void addLanguageOperators(Interpreter& interpreter) {
  addStackOperators(interpreter);
  addArithmeticOperators(interpreter);
  addRelationalOperators(interpreter);
  addControlOperators(interpreter);
  addLoopOperators(interpreter);
  addCompositeOperators(interpreter);
  addArrayOperators(interpreter);
  addDictionaryOperators(interpreter);
  addForallOperators(interpreter);
  addOutputOperators(interpreter);
  addErrorOperators(interpreter);
  addFilterOperators(interpreter);
  addStringOperators(interpreter);
  addTypeOperators(interpreter);
  addConversionOperators(interpreter);
  addMemoryOperators(interpreter);
  addUserObjectOperators(interpreter);
  addBindOperator(interpreter);
  addFileOperators(interpreter);
  addReadOperators(interpreter);
  addWriteOperators(interpreter);
  addEexecOperator(interpreter);
  addResourceOperators(interpreter);
  addParameterOperators(interpreter);
  addSystemOperators(interpreter);
  addBinaryOutputOperators(interpreter);
  addFileListOperator(interpreter);
}

}  // namespace quillpress::level3
