#pragma once

namespace quillpress::level3 {

// A place or a distance; which space it lies in is said by whoever holds it.
struct Point {
  double x = 0;
  double y = 0;

  friend bool operator==(const Point&, const Point&) = default;
};

constexpr Point operator+(Point left, Point right) {
  return {left.x + right.x, left.y + right.y};
}
constexpr Point operator-(Point left, Point right) {
  return {left.x - right.x, left.y - right.y};
}
constexpr Point operator*(Point point, double factor) {
  return {point.x * factor, point.y * factor};
}

constexpr double dot(Point left, Point right) {
  return left.x * right.x + left.y * right.y;
}

// Positive when `right` lies anticlockwise of `left`.
constexpr double cross(Point left, Point right) {
  return left.x * right.y - left.y * right.x;
}

// The distance turned by 90 degrees anticlockwise.
constexpr Point turnedLeft(Point distance) {
  return {-distance.y, distance.x};
}

double length(Point distance);

// The point that lies the share `t` of the way from `from` to `to`.
constexpr Point between(Point from, Point to, double t) {
  return {from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t};
}

}  // namespace quillpress::level3
