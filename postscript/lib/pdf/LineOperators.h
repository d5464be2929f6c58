#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// width  setlinewidth  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetlinewidthOperator, "setlinewidth");

// -  currentlinewidth  width
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurrentlinewidthOperator, "currentlinewidth");

// int  setlinecap  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetlinecapOperator, "setlinecap");

// int  setlinejoin  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetlinejoinOperator, "setlinejoin");

// limit  setmiterlimit  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetmiterlimitOperator, "setmiterlimit");

// array offset  setdash  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetdashOperator, "setdash");

}  // namespace quillpress
