#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// -  vmstatus  level used maximum      A comfortable memory; the sizes are constants.
DECLARE_OPERATOR(VmstatusOperator, "vmstatus");

// key category  resourcestatus  status size true
// Kept: every resource of every category is there (status/resourcestatus.ps).
DECLARE_OPERATOR(ResourcestatusOperator, "resourcestatus");

// -  statusdict  dict
// Kept: a fresh dictionary with each call; what a job stores in it is lost (status/statusdict.ps).
DECLARE_OPERATOR(StatusdictOperator, "statusdict");

// key font  definefont  font
DECLARE_OPERATOR(DefinefontOperator, "definefont");

// bool  setglobal  bool
// Kept: looks at no operand and always makes the global area current (status/setglobal.ps).
DECLARE_OPERATOR(SetglobalOperator, "setglobal");

// -  currentglobal  bool
DECLARE_OPERATOR(CurrentglobalOperator, "currentglobal");

}  // namespace quillpress
