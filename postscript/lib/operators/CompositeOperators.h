#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// dict name   get  any      Only names are keys here.
// array int   get  any
// string int  get  int      The byte, signed.
DECLARE_OPERATOR(GetOperator, "get");

// dict name any      put  -
// array int any      put  -      An index equal to the length appends.
// string int1 int2   put  -      Kept: writes the index, not the value.
DECLARE_OPERATOR(PutOperator, "put");

// array index count   getinterval  array'       Always a copy.
// string index count  getinterval  string'
DECLARE_OPERATOR(GetintervalOperator, "getinterval");

// array index array'    putinterval  -
// string index string'  putinterval  -      The destination grows when the source reaches past its end.
DECLARE_OPERATOR(PutintervalOperator, "putinterval");

// array|string|dict|name  length  int
DECLARE_OPERATOR(LengthOperator, "length");

// proc  bind  proc      Does nothing: names in procedures are looked up when they run.
DECLARE_OPERATOR(BindOperator, "bind");

// any  readonly  any      Does nothing: access attributes are not kept.
DECLARE_OPERATOR(ReadonlyOperator, "readonly");

}  // namespace quillpress
