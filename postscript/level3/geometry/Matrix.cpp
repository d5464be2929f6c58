#include "postscript/level3/geometry/Matrix.h"

#include <cmath>
#include <numbers>

namespace quillpress::level3 {

double length(Point distance) {
  return std::hypot(distance.x, distance.y);
}

Point directionOf(double degrees) {
  const double turn = std::fmod(degrees, 360.0);
  const double quarters = turn / 90.0;
  if (quarters == std::trunc(quarters)) {
    switch ((static_cast<int>(quarters) + 4) % 4) {
      case 0:
        return {1, 0};
      case 1:
        return {0, 1};
      case 2:
        return {-1, 0};
      default:
        return {0, -1};
    }
  }
  const double radians = turn * (std::numbers::pi / 180.0);
  return {std::cos(radians), std::sin(radians)};
}

Matrix Matrix::rotation(double degrees) {
  const Point x = directionOf(degrees);
  return {x.x, x.y, -x.y, x.x, 0, 0};
}

std::optional<Matrix> Matrix::inverse() const {
  const double area = determinant();
  if (area == 0 || !std::isfinite(area)) return std::nullopt;
  const double share = 1 / area;
  if (!std::isfinite(share)) return std::nullopt;
  return Matrix{
      d * share, -b * share, -c * share, a * share, (c * ty - d * tx) * share, (b * tx - a * ty) * share};
}

bool Matrix::isSimilarity() const {
  const Point x{a, b};
  const Point y{c, d};
  const double tolerance = 1e-6 * (dot(x, x) + dot(y, y));
  return std::abs(dot(x, x) - dot(y, y)) <= tolerance && std::abs(dot(x, y)) <= tolerance;
}

double Matrix::meanScale() const {
  return std::sqrt(std::abs(determinant()));
}

}  // namespace quillpress::level3
