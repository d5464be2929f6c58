#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// All operators of this folder. REQUIRES: the interpreter has a Graphics and a Fonts.
void addTextOperators(Interpreter& interpreter);

// The families, for addTextOperators().
void addFontOperators(Interpreter& interpreter);
void addFontResources(Interpreter& interpreter);
void addShowOperators(Interpreter& interpreter);
void addGlyphOperators(Interpreter& interpreter);
void addFontCacheOperators(Interpreter& interpreter);
void addCMapOperators(Interpreter& interpreter);

}  // namespace quillpress::level3
