#pragma once

#include "postscript/level3/geometry/Matrix.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// The six numbers of an array. Throws typecheck, rangecheck, invalidaccess.
Matrix matrixOf(const Object& array);

// Throws typecheck, rangecheck, invalidaccess unless six elements can be written.
void requireMatrixRoom(const Object& array);
// REQUIRES: requireMatrixRoom() did not throw
void storeMatrix(Interpreter& interpreter, const Object& array, const Matrix& matrix);

// Throws stackunderflow.
inline void requireOperands(Interpreter& interpreter, std::size_t count) {
  if (interpreter.operands().depth() < count) raise(ErrorName::kStackUnderflow);
}

// The operand's number. Throws typecheck.
inline double numberOf(const Object& object) {
  if (!object.isNumber()) raise(ErrorName::kTypeCheck);
  return object.asNumber();
}

inline Object realOf(double value) {
  return Object::real(static_cast<float>(value));
}

// Throws undefinedresult.
inline Matrix inverseOf(const Matrix& matrix) {
  const auto inverse = matrix.inverse();
  if (!inverse) raise(ErrorName::kUndefinedResult);
  return *inverse;
}

}  // namespace quillpress::level3
