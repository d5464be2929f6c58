#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// any  type  name      Executable. Kept: operators are names, so they are of "nametype" (conversion/type.ps).
DECLARE_OPERATOR(TypeOperator, "type");

// num|string  cvi  int
DECLARE_OPERATOR(CviOperator, "cvi");

// num|string  cvr  real
DECLARE_OPERATOR(CvrOperator, "cvr");

// string  cvn  name      As executable as the string.
DECLARE_OPERATOR(CvnOperator, "cvn");

// any buffer  cvs  string      The result is a string of its own; the buffer gets the same bytes. A text
// may be one byte longer than the buffer.
DECLARE_OPERATOR(CvsOperator, "cvs");

}  // namespace quillpress
