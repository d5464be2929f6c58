#pragma once

#include "postscript/level3/geometry/Matrix.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// A copy of a font's dictionary with another matrix, as makefont gives it; the copy shares everything else.
// Throws invalidfont.
Object fontWithMatrix(Interpreter& interpreter, const Object& font, const Matrix& matrix);

// What makefont does: the matrix follows the font's own.
Object transformedFont(Interpreter& interpreter, const Object& font, const Matrix& matrix);

// Defines a font, as definefont does. Throws invalidfont, typecheck, invalidaccess.
Object defineFont(Interpreter& interpreter, std::string_view category, const Object& key, const Object& font);

// The font of a name: one that the job has defined, else one of the system's. Throws invalidfont when there
// is none.
Object findFont(Interpreter& interpreter, const Object& key);

}  // namespace quillpress::level3
