#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// -  stroke  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(StrokeOperator, "stroke");

// -  fill  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(FillOperator, "fill");

// -  eofill  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(EofillOperator, "eofill");

// -  clip  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(ClipOperator, "clip");

// -  eoclip  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(EoclipOperator, "eoclip");

// x y width height  rectclip  -      Neither width nor height may be negative.
DECLARE_PLAIN_GRAPHICS_OPERATOR(RectclipOperator, "rectclip");

// -  initclip  -      Writes nothing: PDF cannot widen a clip.
DECLARE_PLAIN_GRAPHICS_OPERATOR(InitclipOperator, "initclip");

// -  clippath  -      Writes nothing.
DECLARE_PLAIN_GRAPHICS_OPERATOR(ClippathOperator, "clippath");

}  // namespace quillpress
