#pragma once

#include <cstdint>

#include "postscript/lib/objects/PostscriptObject.h"

namespace quillpress {

// The comparisons behind eq, ne, ge, gt, le, lt and the end of for.
class Comparer {
 public:
  // Negative, zero or positive as a is below, equal to or above b. Throws Ex for kinds that have no
  // order. Kept: integers are subtracted in 32 bits and may wrap; texts end at their first zero byte.
  static std::int32_t compare(const PostscriptObject& a, const PostscriptObject& b);

  // Arrays by their elements, dictionaries by their entries, nulls by being null; else compare.
  static bool equals(const PostscriptObject& a, const PostscriptObject& b);
};

}  // namespace quillpress
