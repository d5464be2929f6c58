#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// any1 any2  eq  bool
DECLARE_OPERATOR(EqOperator, "eq");

// any1 any2  ne  bool
DECLARE_OPERATOR(NeOperator, "ne");

// any1 any2  ge  bool
DECLARE_OPERATOR(GeOperator, "ge");

// any1 any2  gt  bool
DECLARE_OPERATOR(GtOperator, "gt");

// any1 any2  le  bool
DECLARE_OPERATOR(LeOperator, "le");

// any1 any2  lt  bool
DECLARE_OPERATOR(LtOperator, "lt");

}  // namespace quillpress
