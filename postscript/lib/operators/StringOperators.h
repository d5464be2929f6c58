#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// n  string  string      n zero bytes.
DECLARE_OPERATOR(StringOperator, "string");

// string seek  anchorsearch  post match true
// string seek  anchorsearch  string false
DECLARE_OPERATOR(AnchorsearchOperator, "anchorsearch");

}  // namespace quillpress
