#pragma once

#include <optional>

#include "postscript/level3/geometry/Point.h"

namespace quillpress::level3 {

// A PostScript matrix [a b c d tx ty]:
//
//   x' = a x + c y + tx
//   y' = b x + d y + ty
struct Matrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;

  static constexpr Matrix translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static constexpr Matrix scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }

  // Anticlockwise, in degrees; multiples of 90 are exact.
  static Matrix rotation(double degrees);

  constexpr Point apply(Point point) const {
    return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
  }
  constexpr Point applyToDistance(Point distance) const {
    return {a * distance.x + c * distance.y, b * distance.x + d * distance.y};
  }

  constexpr double determinant() const { return a * d - b * c; }

  // Nothing when the matrix flattens the plane to a line or a point.
  std::optional<Matrix> inverse() const;

  // The axes stay axes: they may be scaled, mirrored or exchanged.
  constexpr bool keepsAxes() const { return (b == 0 && c == 0) || (a == 0 && d == 0); }

  // Circles stay circles, within a millionth.
  bool isSimilarity() const;

  // The factor by which lengths grow on average: the root of the determinant.
  double meanScale() const;

  friend bool operator==(const Matrix&, const Matrix&) = default;
};

// First `first`, then `second`: what PostScript calls first x second.
constexpr Matrix operator*(const Matrix& first, const Matrix& second) {
  return {first.a * second.a + first.b * second.c,
          first.a * second.b + first.b * second.d,
          first.c * second.a + first.d * second.c,
          first.c * second.b + first.d * second.d,
          first.tx * second.a + first.ty * second.c + second.tx,
          first.tx * second.b + first.ty * second.d + second.ty};
}

// Sine and cosine of an angle in degrees, exact at multiples of 90.
Point directionOf(double degrees);

}  // namespace quillpress::level3
