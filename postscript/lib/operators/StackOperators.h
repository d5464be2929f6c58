#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// any  pop  -
DECLARE_PLAIN_OPERATOR(PopOperator, "pop");

// any1 any2  exch  any2 any1
DECLARE_PLAIN_OPERATOR(ExchOperator, "exch");

// any  dup  any any'      The second is a clone: a new handle, and a plain name for an operator.
DECLARE_PLAIN_OPERATOR(DupOperator, "dup");

// any1 ... anyn n  copy  any1 ... anyn any1 ... anyn
// composite1 composite2  copy  composite2      Copies the elements or entries into the second.
DECLARE_OPERATOR(CopyOperator, "copy");

// anyn ... any0 n  index  anyn ... any0 anyn'
DECLARE_PLAIN_OPERATOR(IndexOperator, "index");

// any(n-1) ... any0 n j  roll  any((j-1) mod n) ... any0 any(n-1) ... any(j mod n)
DECLARE_PLAIN_OPERATOR(RollOperator, "roll");

// any1 ... anyn  clear  -
DECLARE_PLAIN_OPERATOR(ClearOperator, "clear");

// any1 ... anyn  count  any1 ... anyn n
DECLARE_PLAIN_OPERATOR(CountOperator, "count");

// -  mark  mark
DECLARE_PLAIN_OPERATOR(MarkOperator, "mark");

// mark obj1 ... objn  cleartomark  -
DECLARE_PLAIN_OPERATOR(CleartomarkOperator, "cleartomark");

// mark obj1 ... objn  counttomark  mark obj1 ... objn n      Without a mark: the whole depth.
DECLARE_PLAIN_OPERATOR(CounttomarkOperator, "counttomark");

}  // namespace quillpress
