#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// -  gsave  -
DECLARE_GRAPHICS_OPERATOR(GsaveOperator, "gsave");

// -  grestore  -      Without a gsave: a fresh graphics state.
DECLARE_GRAPHICS_OPERATOR(GrestoreOperator, "grestore");

// -  save  0.0      Saves the graphics state; memory is never rolled back.
DECLARE_GRAPHICS_OPERATOR(SaveOperator, "save");

// any  restore  -      Restores the graphics state of the last save; without one it writes nothing.
DECLARE_GRAPHICS_OPERATOR(RestoreOperator, "restore");

// -  showpage  -      Does nothing: pages belong to the caller.
DECLARE_GRAPHICS_OPERATOR(ShowpageOperator, "showpage");

// string  print  -      Writes to the message output.
DECLARE_GRAPHICS_OPERATOR(PrintOperator, "print");

}  // namespace quillpress
