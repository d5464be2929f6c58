#include "postscript/lib/pdf/ArcSweep.h"

#include <algorithm>
#include <cmath>

#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

constexpr double kQuadrant = 90;
constexpr double kQuadrantInRadians = 1.5708;  // a little more, so that a right angle is one piece

Point onCircle(const Circle& circle, double radius, double radians) {
  return {circle.centre.x + radius * std::cos(radians), circle.centre.y + radius * std::sin(radians)};
}

// The control points stand at distance d from the centre, phi away from the ends.
ArcPiece pieceBetween(const Circle& circle, double a1, double a2) {
  const double h = (a2 - a1) / 2;
  const double k = std::cos(h);
  // The curve then touches the circle at its middle, which makes it the best one for a quadrant.
  const double x = (4 - k) / 3;
  const double sine = std::sin(h);
  // A sweep too small for its sine to differ from zero is a point.
  const double y = sine == 0 ? 0 : -((1 - k) * (k - 3)) / (3 * sine);
  const double phi = h - std::atan(y / x);
  const double d = circle.radius * std::sqrt(x * x + y * y);
  return {onCircle(circle, circle.radius, a1), onCircle(circle, d, a1 + phi), onCircle(circle, d, a2 - phi),
          onCircle(circle, circle.radius, a2)};
}

// Where the piece that begins at the angle ends: at the next multiple of 90 degrees, or where the sweep does.
double endOfPiece(double angle, double endAngle, bool clockwise) {
  if (clockwise) {
    const double cut = (std::ceil(angle / kQuadrant) - 1) * kQuadrant;
    return cut < angle ? std::max(cut, endAngle) : endAngle;
  }
  const double cut = (std::floor(angle / kQuadrant) + 1) * kQuadrant;
  // Among angles beyond 10^17 there is no room for a cut, and the loop over the pieces must end.
  return cut > angle ? std::min(cut, endAngle) : endAngle;
}

}  // namespace

std::vector<ArcPiece> arcPieces(const Circle& circle, double startAngle, double endAngle) {
  const bool clockwise = endAngle < startAngle;
  std::vector<ArcPiece> pieces;
  for (double angle = startAngle; angle != endAngle;) {
    const double next = endOfPiece(angle, endAngle, clockwise);
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
