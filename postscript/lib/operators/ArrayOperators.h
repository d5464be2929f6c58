#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// n  array  array      n nulls; an empty array for a negative count. A count beyond what
// memory allows fails without an Ex, as any allocation does.
DECLARE_OPERATOR(ArrayOperator, "array");

// any1 ... anyn n  packedarray  array      An ordinary array: packed ones are no kind of their own.
DECLARE_OPERATOR(PackedarrayOperator, "packedarray");

// bool  setpacking  -
DECLARE_OPERATOR(SetpackingOperator, "setpacking");

// -  currentpacking  true      Kept: true whatever setpacking was given (arrays/currentpacking.ps).
DECLARE_OPERATOR(CurrentpackingOperator, "currentpacking");

// array  aload  any1 ... anyn array
DECLARE_OPERATOR(AloadOperator, "aload");

// any1 ... anyn array  astore  array
DECLARE_OPERATOR(AstoreOperator, "astore");

}  // namespace quillpress
