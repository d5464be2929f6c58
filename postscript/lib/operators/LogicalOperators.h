#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// bool  not  bool
// int   not  int      The arithmetic negation, not the complement of the bits.
DECLARE_PLAIN_OPERATOR(NotOperator, "not");

// bool1 bool2  and  bool
// int1 int2    and  int
DECLARE_PLAIN_OPERATOR(AndOperator, "and");

// bool1 bool2  or  bool
// int1 int2    or  int
DECLARE_PLAIN_OPERATOR(OrOperator, "or");

// bool1 bool2  xor  bool
// int1 int2    xor  int
DECLARE_PLAIN_OPERATOR(XOrOperator, "xor");

// -  true  true
DECLARE_PLAIN_OPERATOR(TrueOperator, "true");

// -  false  false
DECLARE_PLAIN_OPERATOR(FalseOperator, "false");

// -  null  null
DECLARE_PLAIN_OPERATOR(NullOperator, "null");

}  // namespace quillpress
