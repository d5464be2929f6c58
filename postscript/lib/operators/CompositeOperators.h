#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// dict name   get  any      Only names are keys here.
// array int   get  any
// string int  get  int      The byte, signed.
DECLARE_OPERATOR(GetOperator, "get");

// dict name any      put  -
// array int any      put  -      Kept: an index equal to the length appends (composites/put.ps).
// string int1 int2   put  -
// Kept: the byte written is the low eight bits of the index, not of the value (composites/put.ps).
DECLARE_OPERATOR(PutOperator, "put");

// array index count   getinterval  array'       Kept: always a copy (composites/getinterval.ps).
// string index count  getinterval  string'
DECLARE_OPERATOR(GetintervalOperator, "getinterval");

// array index array'    putinterval  -
// string index string'  putinterval  -      Kept: the destination grows (composites/putinterval.ps).
DECLARE_OPERATOR(PutintervalOperator, "putinterval");

// array|string|dict|name  length  int
DECLARE_OPERATOR(LengthOperator, "length");

// proc  bind  proc      Kept: does nothing; names in procedures are looked up when they run
// (composites/bind.ps).
DECLARE_OPERATOR(BindOperator, "bind");

// any  readonly  any      Does nothing: access attributes are not kept.
DECLARE_OPERATOR(ReadonlyOperator, "readonly");

}  // namespace quillpress
