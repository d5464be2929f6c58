#include "postscript/lib/objects/Matrix.h"

#include <array>
#include <cmath>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {

// The elements are asked for one after another, so that the first one missing gives the error.
Matrix Matrix::of(const ArrayObject& array) {
  return {array.number(0), array.number(1), array.number(2),
          array.number(3), array.number(4), array.number(5)};
}

// New objects, not new values in the old ones: other arrays may hold those, and they may be integers.
void Matrix::storeTo(const ArrayObject& array) const {
  const std::array<double, 6> values{a, b, c, d, tx, ty};
  if (array.count() != values.size()) THROW_EX("expecting array of 6 doubles");
  for (std::size_t i = 0; i < values.size(); ++i) {
    array.elements().put(static_cast<std::ptrdiff_t>(i), make<RealObject>(values[i]));
  }
}

// Into a new matrix, so that the result may be stored over either operand.
Matrix Matrix::times(const Matrix& next) const {
  return {a * next.a + b * next.c,
          a * next.b + b * next.d,
          c * next.a + d * next.c,
          c * next.b + d * next.d,
          tx * next.a + ty * next.c + next.tx,
          tx * next.b + ty * next.d + next.ty};
}

// A determinant that has overflown is refused as well: its quotients would be zeros, and all points one.
Matrix Matrix::inverse() const {
  const double determinant = a * d - b * c;
  if (determinant == 0 || !std::isfinite(determinant)) THROW_EX("singular matrix has no inverse");
  return {d / determinant,
          -b / determinant,
          -c / determinant,
          a / determinant,
          (c * ty - d * tx) / determinant,
          (b * tx - a * ty) / determinant};
}

// Row vectors: the point stands on the left of the matrix.
Point transform(const Matrix& matrix, Point point) {
  const Point moved = transformDistance(matrix, point);
  return {moved.x + matrix.tx, moved.y + matrix.ty};
}

// Without the translation, which moves both ends of a distance alike.
Point transformDistance(const Matrix& matrix, Point distance) {
  return {distance.x * matrix.a + distance.y * matrix.c, distance.x * matrix.b + distance.y * matrix.d};
}

}  // namespace quillpress
