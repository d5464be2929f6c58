#pragma once

#include "postscript/level3/geometry/Path.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Executes a user path, plain or encoded, into a path in device space under a matrix. The current path stays
// as it is. Throws typecheck for what is no user path, rangecheck for points beyond its box.
Path userPath(Interpreter& interpreter, const Object& object, const Matrix& matrix);

// Whether an operand may be a user path: an array or packed array, not a matrix of six numbers.
bool mayBeUserPath(const Object& object);

}  // namespace quillpress::level3
