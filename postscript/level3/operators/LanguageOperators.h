#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// All operators of the language itself: those that need neither page nor font.
void addLanguageOperators(Interpreter& interpreter);

// The families, for addLanguageOperators().
void addStackOperators(Interpreter& interpreter);
void addArithmeticOperators(Interpreter& interpreter);
void addRelationalOperators(Interpreter& interpreter);
void addControlOperators(Interpreter& interpreter);
void addLoopOperators(Interpreter& interpreter);
void addCompositeOperators(Interpreter& interpreter);
void addArrayOperators(Interpreter& interpreter);
void addDictionaryOperators(Interpreter& interpreter);
void addForallOperators(Interpreter& interpreter);
void addOutputOperators(Interpreter& interpreter);
void addErrorOperators(Interpreter& interpreter);
void addFilterOperators(Interpreter& interpreter);
void addStringOperators(Interpreter& interpreter);
void addTypeOperators(Interpreter& interpreter);
void addConversionOperators(Interpreter& interpreter);
void addMemoryOperators(Interpreter& interpreter);
void addUserObjectOperators(Interpreter& interpreter);
void addBindOperator(Interpreter& interpreter);
void addFileOperators(Interpreter& interpreter);
void addReadOperators(Interpreter& interpreter);
void addWriteOperators(Interpreter& interpreter);
void addEexecOperator(Interpreter& interpreter);
void addResourceOperators(Interpreter& interpreter);
void addParameterOperators(Interpreter& interpreter);
void addSystemOperators(Interpreter& interpreter);
void addBinaryOutputOperators(Interpreter& interpreter);
void addFileListOperator(Interpreter& interpreter);

}  // namespace quillpress::level3
