#include "postscript/lib/pdf/ArcSweep.h"

#include <algorithm>
#include <cmath>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

constexpr double kQuadrant = 90;
constexpr double kQuadrantInRadians = 1.5708;  // a little more, so that a right angle is one piece
constexpr double kMaxSweep = 360.0 * 1000;     // keeps a hostile job from filling the memory with curves

Point onCircle(const Circle& circle, double radius, double radians) {
  return {circle.centre.x + radius * std::cos(radians), circle.centre.y + radius * std::sin(radians)};
}

// The control points stand at distance d from the centre, phi away from the ends.
ArcPiece pieceBetween(const Circle& circle, double a1, double a2) {
  const double h = (a2 - a1) / 2;
  const double k = std::cos(h);
  const double x = (4 - k) / 3;
  const double sine = std::sin(h);
  const double y = sine == 0 ? 0 : -((1 - k) * (k - 3)) / (3 * sine);
  const double phi = h - std::atan(y / x);
  const double d = circle.radius * std::sqrt(x * x + y * y);
  return {onCircle(circle, circle.radius, a1), onCircle(circle, d, a1 + phi), onCircle(circle, d, a2 - phi),
          onCircle(circle, circle.radius, a2)};
}

// The next multiple of 90 degrees strictly beyond the angle.
double nextCut(double angle, bool clockwise) {
  return clockwise ? (std::ceil(angle / kQuadrant) - 1) * kQuadrant
                   : (std::floor(angle / kQuadrant) + 1) * kQuadrant;
}

}  // namespace

std::vector<ArcPiece> arcPieces(const Circle& circle, double startAngle, double endAngle) {
  const double sweep = std::fabs(endAngle - startAngle);
  const bool sensible = sweep <= kMaxSweep && std::fabs(startAngle) <= 1e9;  // false for NaN, too
  if (!sensible) THROW_EX("arc angles out of range");
  const bool clockwise = endAngle < startAngle;
  std::vector<ArcPiece> pieces;
  for (double angle = startAngle; angle != endAngle;) {
    const double cut = nextCut(angle, clockwise);
    const double next = clockwise ? std::max(cut, endAngle) : std::min(cut, endAngle);
    pieces.push_back(pieceBetween(circle, angle * kPi / 180.0, next * kPi / 180.0));
    angle = next;
  }
  return pieces;
}

std::vector<ArcPiece> cornerPieces(const Circle& circle, double startAngle, double turn) {
  const double endAngle = startAngle + turn;
  if (std::fabs(turn) <= kQuadrantInRadians) return {pieceBetween(circle, startAngle, endAngle)};
  const double middle = startAngle + turn / 2;
  return {pieceBetween(circle, startAngle, middle), pieceBetween(circle, middle, endAngle)};
}

}  // namespace quillpress
