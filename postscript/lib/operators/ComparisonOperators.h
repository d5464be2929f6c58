#pragma once

#include <cstdint>

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// The comparisons behind eq, ne, ge, gt, le, lt and the end of for.
class Comparer {
 public:
  // Negative, zero or positive as a is below, equal to or above b. Throws Ex for kinds that have no
  // order. Kept: integers are subtracted in 32 bits and may wrap; texts end at their first zero byte
  // (comparison/gt.ps).
  static std::int32_t compare(const PostscriptObject& a, const PostscriptObject& b);

  // Arrays by their elements, dictionaries by their entries, nulls by being null; else compare.
  static bool equals(const PostscriptObject& a, const PostscriptObject& b);
};

// any1 any2  eq  bool
DECLARE_PLAIN_OPERATOR(EqOperator, "eq");

// any1 any2  ne  bool
DECLARE_PLAIN_OPERATOR(NeOperator, "ne");

// any1 any2  ge  bool
DECLARE_PLAIN_OPERATOR(GeOperator, "ge");

// any1 any2  gt  bool
DECLARE_PLAIN_OPERATOR(GtOperator, "gt");

// any1 any2  le  bool
DECLARE_PLAIN_OPERATOR(LeOperator, "le");

// any1 any2  lt  bool
DECLARE_PLAIN_OPERATOR(LtOperator, "lt");

}  // namespace quillpress
