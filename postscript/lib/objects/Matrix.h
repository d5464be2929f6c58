#pragma once

#include "postscript/lib/objects/ArrayObject.h"

namespace quillpress {

// A transformation, in the row-vector convention:
//
//   [x' y' 1] = [x y 1] * | a  b  0 |
//                         | c  d  0 |
//                         | tx ty 1 |
struct Matrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;

  bool operator==(const Matrix&) const = default;

  // Reads six numbers. Throws Ex for a missing element and for what is no number.
  [[nodiscard]] static Matrix of(const ArrayObject& array);

  // Replaces the six elements by reals. Throws Ex when the array has not six of them.
  void storeTo(const ArrayObject& array) const;

  // This matrix first, then `next`.
  [[nodiscard]] Matrix times(const Matrix& next) const;

  // Throws Ex for a singular matrix.
  [[nodiscard]] Matrix inverse() const;
};

struct Point {
  double x = 0;
  double y = 0;
};

// Transforms a point, or a distance, which translation leaves alone.
[[nodiscard]] Point transform(const Matrix& matrix, Point point);
[[nodiscard]] Point transformDistance(const Matrix& matrix, Point distance);

}  // namespace quillpress
