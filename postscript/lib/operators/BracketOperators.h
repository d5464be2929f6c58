#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// -  {  -      Begins a procedure on the deferred execution stack; tokens go into it until its }.
DECLARE_OPERATOR(LeftCurlyBraceOperator, "{");

// -  }  procedure      An inner procedure becomes an element of the one around it instead.
DECLARE_OPERATOR(RightCurlyBraceOperator, "}");

// -  [  mark
DECLARE_OPERATOR(LeftSquareBracketOperator, "[");

// mark any1 ... anyn  ]  array
DECLARE_OPERATOR(RightSquareBracketOperator, "]");

}  // namespace quillpress
