#include "postscript/level3/geometry/Arc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillpress::level3 {

namespace {

// More turns than anyone sees; a job that asks for a billion still gets an answer.
constexpr double kMostDegrees = 360.0 * 100;

void appendPiece(Path& path, const Matrix& matrix, Point centre, double radius, double from, double to) {
  const Point begin = directionOf(from);
  const Point end = directionOf(to);
  const double quarterAngle = (to - from) * (std::numbers::pi / 180.0) / 4;
  const double reach = radius * std::tan(quarterAngle) * 4 / 3;
  const Point control1 = centre + begin * radius + turnedLeft(begin) * reach;
  const Point control2 = centre + end * radius - turnedLeft(end) * reach;
  path.curveTo(matrix.apply(control1), matrix.apply(control2), matrix.apply(centre + end * radius));
}

double endOfArc(double from, double to, Turn turn) {
  if (turn == Turn::kAnticlockwise) {
    if (to < from) to += 360 * std::ceil((from - to) / 360);
    return std::min(to, from + kMostDegrees);
  }
  if (to > from) to -= 360 * std::ceil((to - from) / 360);
  return std::max(to, from - kMostDegrees);
}

}  // namespace

void appendArc(Path& path, const Matrix& matrix, Point centre, double radius, double fromDegrees,
               double toDegrees, Turn turn) {
  const double end = endOfArc(fromDegrees, toDegrees, turn);
  const Point start = matrix.apply(centre + directionOf(fromDegrees) * radius);
  if (path.isEmpty()) {
    path.moveTo(start);
  } else {
    path.lineTo(start);
  }
  // Cut at multiples of 90 degrees, so that pieces of one circle are drawn alike wherever an arc begins.
  double from = fromDegrees;
  while (from != end) {
    double to = end;
    if (turn == Turn::kAnticlockwise) {
      to = std::min(end, 90 * (std::floor(from / 90) + 1));
    } else {
      to = std::max(end, 90 * (std::ceil(from / 90) - 1));
    }
    appendPiece(path, matrix, centre, radius, from, to);
    from = to;
  }
}

TangentArc tangentArc(Point from, Point corner, Point to, double radius) {
  const Point back = from - corner;
  const Point ahead = to - corner;
  const double backLength = length(back);
  const double aheadLength = length(ahead);
  const double sine = cross(back, ahead);
  if (backLength == 0 || aheadLength == 0 || std::abs(sine) <= 1e-12 * backLength * aheadLength) {
    return {corner, corner, corner, false};
  }
  const Point u = back * (1 / backLength);
  const Point v = ahead * (1 / aheadLength);
  // From the corner to the tangent points: radius over the tangent of half the angle between the sides.
  const double tangent = std::abs(radius * (1 + dot(u, v)) / cross(u, v));
  const Point first = corner + u * tangent;
  const Point inward = turnedLeft(u) * (sine > 0 ? 1.0 : -1.0);
  return {first, corner + v * tangent, first + inward * radius, true};
}

void appendTangentArc(Path& path, const Matrix& matrix, const TangentArc& arc) {
  path.lineTo(matrix.apply(arc.first));
  if (!arc.isRound) return;
  const Point from = arc.first - arc.centre;
  const Point to = arc.second - arc.centre;
  const double radius = length(from);
  if (radius == 0) return;
  // Always the short way round: less than half a turn, in two pieces when beyond a quarter.
  const double sweep = std::atan2(cross(from, to), dot(from, to));
  const int pieces = std::abs(sweep) > std::numbers::pi / 2 ? 2 : 1;
  const double step = sweep / pieces;
  const double reach = std::tan(step / 4) * 4 / 3;
  Point begin = from;
  for (int piece = 1; piece <= pieces; ++piece) {
    const double angle = step * piece;
    const Point end = piece == pieces ? to : from * std::cos(angle) + turnedLeft(from) * std::sin(angle);
    path.curveTo(matrix.apply(arc.centre + begin + turnedLeft(begin) * reach),
                 matrix.apply(arc.centre + end - turnedLeft(end) * reach), matrix.apply(arc.centre + end));
    begin = end;
  }
}

}  // namespace quillpress::level3
