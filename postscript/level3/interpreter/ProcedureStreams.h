#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// The data source that an operand stands for: a file, a string, or a procedure that returns strings until one
// is empty. The operand must live as long as the source. Throws typecheck for anything else, and
// invalidaccess.
SourcePointer sourceOf(Interpreter& interpreter, const Object& operand);

// The data target that an operand stands for: a file, a string, or a procedure that takes a full string and a
// boolean, whether more will come, and returns the string to be filled next. Otherwise as above.
SinkPointer targetOf(Interpreter& interpreter, const Object& operand);

}  // namespace quillpress::level3
