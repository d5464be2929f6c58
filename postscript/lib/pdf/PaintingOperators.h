#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// -  stroke  -
DECLARE_GRAPHICS_OPERATOR(StrokeOperator, "stroke");

// -  fill  -
DECLARE_GRAPHICS_OPERATOR(FillOperator, "fill");

// -  eofill  -
DECLARE_GRAPHICS_OPERATOR(EofillOperator, "eofill");

}  // namespace quillpress
