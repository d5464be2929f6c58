#pragma once

#include <algorithm>
#include <limits>

#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {

// A closed rectangle along the axes. Made without corners it is empty, and any point that it takes in makes
// it real.
struct Box {
  double left = std::numeric_limits<double>::infinity();
  double bottom = std::numeric_limits<double>::infinity();
  double right = -std::numeric_limits<double>::infinity();
  double top = -std::numeric_limits<double>::infinity();

  // Between two opposite corners, in any order.
  static constexpr Box ofCorners(Point one, Point other) {
    return {std::min(one.x, other.x), std::min(one.y, other.y), std::max(one.x, other.x),
            std::max(one.y, other.y)};
  }

  constexpr bool isEmpty() const { return !(left <= right && bottom <= top); }
  constexpr double width() const { return right - left; }
  constexpr double height() const { return top - bottom; }

  constexpr void include(Point point) {
    left = std::min(left, point.x);
    bottom = std::min(bottom, point.y);
    right = std::max(right, point.x);
    top = std::max(top, point.y);
  }
  constexpr void include(const Box& other) {
    if (other.isEmpty()) return;
    include(Point{other.left, other.bottom});
    include(Point{other.right, other.top});
  }

  constexpr bool contains(Point point) const {
    return left <= point.x && point.x <= right && bottom <= point.y && point.y <= top;
  }
  constexpr bool contains(const Box& other) const {
    return left <= other.left && other.right <= right && bottom <= other.bottom && other.top <= top;
  }
  constexpr bool touches(const Box& other) const {
    return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
  }

  constexpr Box grownBy(double margin) const {
    return isEmpty() ? *this : Box{left - margin, bottom - margin, right + margin, top + margin};
  }

  friend bool operator==(const Box&, const Box&) = default;
};

// What two boxes share; empty when they lie apart.
constexpr Box intersection(const Box& one, const Box& other) {
  return {std::max(one.left, other.left), std::max(one.bottom, other.bottom),
          std::min(one.right, other.right), std::min(one.top, other.top)};
}

// The box around the image of a box.
constexpr Box transformed(const Box& box, const Matrix& matrix) {
  if (box.isEmpty()) return {};
  const Box alongX = Box::ofCorners({matrix.a * box.left, matrix.b * box.left},
                                    {matrix.a * box.right, matrix.b * box.right});
  const Box alongY = Box::ofCorners({matrix.c * box.bottom, matrix.d * box.bottom},
                                    {matrix.c * box.top, matrix.d * box.top});
  return {alongX.left + alongY.left + matrix.tx, alongX.bottom + alongY.bottom + matrix.ty,
          alongX.right + alongY.right + matrix.tx, alongX.top + alongY.top + matrix.ty};
}

}  // namespace quillpress::level3
