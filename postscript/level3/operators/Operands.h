#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Checks that many operators share. Each is called before anything is popped.

// A real result. Throws undefinedresult when single precision does not hold it.
inline Object realResult(double value) {
  const auto real = static_cast<float>(value);
  if (!std::isfinite(real)) raise(ErrorName::kUndefinedResult);
  return Object::real(real);
}

// An integer operand from 0 to `most`. Throws rangecheck.
inline std::size_t countOf(const Object& integer, std::size_t most = Object::kMaxLength) {
  const std::int64_t value = integer.asInteger();
  if (value < 0 || static_cast<std::uint64_t>(value) > most) raise(ErrorName::kRangeCheck);
  return static_cast<std::size_t>(value);
}

// An integer operand from 0 on, for what has a limit of its own and an error for that. Where sizes have 32
// bits a greater one becomes the greatest. Throws rangecheck.
inline std::size_t anyCountOf(const Object& integer) {
  const std::int64_t value = integer.asInteger();
  if (value < 0) raise(ErrorName::kRangeCheck);
  return static_cast<std::size_t>(std::min<std::int64_t>(value, PTRDIFF_MAX));
}

// An index into something of that length. Throws rangecheck.
inline std::uint32_t indexOf(const Object& integer, std::size_t length) {
  const std::int64_t value = integer.asInteger();
  if (value < 0 || static_cast<std::uint64_t>(value) >= length) raise(ErrorName::kRangeCheck);
  return static_cast<std::uint32_t>(value);
}

// Throw invalidaccess.
inline void requireReadable(const Object& composite) {
  const bool isReadable =
      composite.isDictionary() ? composite.asDictionary()->isReadable() : composite.isReadable();
  if (!isReadable) raise(ErrorName::kInvalidAccess);
}
inline void requireWritable(const Object& composite) {
  const bool isWritable =
      composite.isDictionary() ? composite.asDictionary()->isWritable() : composite.isWritable();
  if (!isWritable) raise(ErrorName::kInvalidAccess);
}

// What stands for the two topmost operands afterwards.
inline void replaceTwo(Interpreter& interpreter, const Object& result) {
  interpreter.operands().pop();
  interpreter.operands().top() = result;
}

// How many operands lie above the topmost mark. Throws unmatchedmark.
inline std::size_t countToMark(const Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  for (std::size_t i = 0; i < operands.depth(); ++i) {
    if (operands.top(i).isMark()) return i;
  }
  raise(ErrorName::kUnmatchedMark);
}

}  // namespace quillpress::level3
