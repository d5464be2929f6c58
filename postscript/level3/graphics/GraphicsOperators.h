#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// All operators of this folder. REQUIRES: the interpreter has a Graphics.
void addGraphicsOperators(Interpreter& interpreter);

// The families, for addGraphicsOperators().
void addMatrixOperators(Interpreter& interpreter);
void addStateOperators(Interpreter& interpreter);
void addPathOperators(Interpreter& interpreter);
void addPathQueryOperators(Interpreter& interpreter);
void addClipOperators(Interpreter& interpreter);
void addPaintOperators(Interpreter& interpreter);
void addUserPathOperators(Interpreter& interpreter);
void addInsidenessOperators(Interpreter& interpreter);
void addColourOperators(Interpreter& interpreter);
void addRenderingOperators(Interpreter& interpreter);
void addFormOperators(Interpreter& interpreter);
void addPatternOperators(Interpreter& interpreter);
void addImageOperators(Interpreter& interpreter);

}  // namespace quillpress::level3
