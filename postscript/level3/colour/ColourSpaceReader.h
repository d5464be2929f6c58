#pragma once

#include "postscript/level3/colour/ColourSpace.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// The colour space that a name or an array says, as setcolorspace, images and shadings take it. Procedures in
// it are run here, so the operand must stay on the stack. Throws what setcolorspace throws.
ColourSpacePointer readColourSpace(Interpreter& interpreter, const Object& description);

}  // namespace quillpress::level3
