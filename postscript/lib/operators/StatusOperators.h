#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// -  vmstatus  level used maximum      A comfortable memory; the sizes are constants.
DECLARE_OPERATOR(VmstatusOperator, "vmstatus");

// key category  resourcestatus  status size true      Every resource of every category is there.
DECLARE_OPERATOR(ResourcestatusOperator, "resourcestatus");

// -  statusdict  dict      Kept: a fresh dictionary with each call; what a job stores in it is lost.
DECLARE_OPERATOR(StatusdictOperator, "statusdict");

// key font  definefont  font
DECLARE_OPERATOR(DefinefontOperator, "definefont");

// bool  setglobal  bool      Kept: looks at no operand and always makes the global area current.
DECLARE_OPERATOR(SetglobalOperator, "setglobal");

// -  currentglobal  bool
DECLARE_OPERATOR(CurrentglobalOperator, "currentglobal");

}  // namespace quillpress
