#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// All operators of this folder. REQUIRES: the interpreter has a PageDevice.
void addDeviceOperators(Interpreter& interpreter);

// The families, for addDeviceOperators().
void addPageOperators(Interpreter& interpreter);
void addPdfMarkOperator(Interpreter& interpreter);

// What jobs for printers of the earlier levels rely on: papers by their names, and a printer's statusdict.
void addPaperSizes(Interpreter& interpreter);
void addStatusDictionary(Interpreter& interpreter);

}  // namespace quillpress::level3
