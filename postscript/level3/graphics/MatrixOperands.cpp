#include "postscript/level3/graphics/MatrixOperands.h"

#include <array>

namespace quillpress::level3 {

namespace {

constexpr std::uint32_t kElements = 6;

}  // namespace

Matrix matrixOf(const Object& array) {
  if (!array.isArray()) raise(ErrorName::kTypeCheck);
  if (!array.isReadable()) raise(ErrorName::kInvalidAccess);
  if (array.length() != kElements) raise(ErrorName::kRangeCheck);
  const Object* element = array.elements();
  return {numberOf(element[0]), numberOf(element[1]), numberOf(element[2]),
          numberOf(element[3]), numberOf(element[4]), numberOf(element[5])};
}

void requireMatrixRoom(const Object& array) {
  if (!array.isArray()) raise(ErrorName::kTypeCheck);
  if (!array.isWritable()) raise(ErrorName::kInvalidAccess);
  if (array.length() != kElements) raise(ErrorName::kRangeCheck);
}

void storeMatrix(Interpreter& interpreter, const Object& array, const Matrix& matrix) {
  const std::array<double, kElements> values{matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty};
  for (std::uint32_t index = 0; index < kElements; ++index) {
    interpreter.memory().setElement(array, index, realOf(values[index]));
  }
}

}  // namespace quillpress::level3
