#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// -  newpath  -      Ends what has been written of a path, without painting it.
DECLARE_PLAIN_GRAPHICS_OPERATOR(NewpathOperator, "newpath");

// -  currentpoint  x y
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurrentpointOperator, "currentpoint");

// x y  moveto  -      Written only when something is drawn from there.
DECLARE_PLAIN_GRAPHICS_OPERATOR(MovetoOperator, "moveto");

// dx dy  rmoveto  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(RmovetoOperator, "rmoveto");

// x y  lineto  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(LinetoOperator, "lineto");

// dx dy  rlineto  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(RlinetoOperator, "rlineto");

// x1 y1 x2 y2 x3 y3  curveto  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurvetoOperator, "curveto");

// dx1 dy1 dx2 dy2 dx3 dy3  rcurveto  -      All relative to the current point; written absolute.
DECLARE_PLAIN_GRAPHICS_OPERATOR(RcurvetoOperator, "rcurveto");

// -  closepath  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(ClosepathOperator, "closepath");

}  // namespace quillpress
