#pragma once

#include "postscript/level3/colour/ColourSpace.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// CIEBasedA, ABC, DEF and DEFG. In the PDF they become ICC profiles, and Lab where they say just that:
// viewers heed profiles, while many take CalGray and CalRGB for device colours. Throws what setcolorspace
// throws.
ColourSpacePointer readCieSpace(Interpreter& interpreter, const Object& array);

}  // namespace quillpress::level3
