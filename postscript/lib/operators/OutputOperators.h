#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// any  =  -      Writes the object's cvs text and a line feed to the message output.
DECLARE_OPERATOR(EqualsSignOperator, "=");

// any  ==  -      Writes the object's print text and a line feed.
DECLARE_OPERATOR(DoubleEqualsSignOperator, "==");

// any1 ... anyn  stack  any1 ... anyn      Writes every object as = does, the top first.
DECLARE_OPERATOR(StackOperator, "stack");

}  // namespace quillpress
