#include "postscript/lib/pdf/ArcOperators.h"

#include <cmath>
#include <numbers>

#include "postscript/lib/base/Bounds.h"
#include "postscript/lib/pdf/ArcSweep.h"

namespace quillpress {

namespace {

constexpr double kFullTurn = 360;

// Raises `angle` by full turns until it is greater than `bound`. In one step: hostile angles are millions of
// turns apart.
double raisedAbove(double bound, double angle) {
  if (angle > bound) return angle;
  angle += std::floor((bound - angle) / kFullTurn) * kFullTurn;
  return angle > bound ? angle : angle + kFullTurn;
}

// The direction from one point to another, in radians.
double directionOf(Point from, Point to) {
  return std::atan2(to.y - from.y, to.x - from.x);
}

Point along(Point from, Point to, double distance) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  return {from.x + (to.x - from.x) / length * distance, from.y + (to.y - from.y) / length * distance};
}

void writePieces(Postscript2Pdf& converter, const std::vector<ArcPiece>& pieces) {
  for (const ArcPiece& piece : pieces)
    converter.path().writeCurve(converter.content(), piece.control1, piece.control2, piece.end);
}

// The circle that touches the lines corner-from and corner-to in the two tangent points.
struct Corner {
  bool isStraight = true;  // no circle: the lines coincide, or there is no radius
  Circle circle;
  Point firstTangent;
  Point secondTangent;
};

// All in user space, as the lines themselves: the viewer applies the matrix to the curves as well.
Corner roundCorner(Point from, Point corner, Point to, double radius) {
  const Point toFrom{from.x - corner.x, from.y - corner.y};
  const Point toEnd{to.x - corner.x, to.y - corner.y};
  const double cross = toFrom.x * toEnd.y - toFrom.y * toEnd.x;
  const double dot = toFrom.x * toEnd.x + toFrom.y * toEnd.y;
  // The lines lie in one, or there is no circle: the corner stays, as one line to it.
  if (cross == 0 || radius == 0) return {true, {}, corner, corner};
  const double halfAngle = std::atan2(std::fabs(cross), dot) / 2;
  const double tangentLength = radius / std::tan(halfAngle);
  const Point first = along(corner, from, tangentLength);
  const Point second = along(corner, to, tangentLength);
  const Point middle{(first.x + second.x) / 2, (first.y + second.y) / 2};
  const Point centre = along(corner, middle, radius / std::sin(halfAngle));
  return {false, {centre, std::fabs(radius)}, first, second};
}

}  // namespace

void Arcer::popAndDraw(Interpreter& interpreter, Direction direction) {
  double endAngle = popNumber(interpreter);
  const double startAngle = popNumber(interpreter);
  const double radius = popNumber(interpreter);
  const Point centre = popPoint(interpreter);
  endAngle = direction == Direction::kCounterclockwise ? raisedAbove(startAngle, endAngle)
                                                       : -raisedAbove(-startAngle, -endAngle);
  const double sweep = std::fabs(endAngle - startAngle);
  // False also for angles that are no numbers, and for those so large that a turn does not change them.
  const bool canBeDrawn = sweep > 0 && sweep <= kMaxArcSweep;
  if (!canBeDrawn) THROW_EX("arc angles out of range");
  // Before anything is written, so that an error leaves no half an arc.
  const std::vector<ArcPiece> pieces = arcPieces({centre, radius}, startAngle, endAngle);
  converter.path().writePendingMove(converter.content());
  // The mark of the graphics state decides, not whether there is a current point.
  if (converter.path().isOpen()) {
    converter.path().writeLine(converter.content(), pieces.front().start);
  } else {
    converter.path().writeMove(converter.content(), pieces.front().start);
  }
  writePieces(converter, pieces);
}

Arcter::TangentPoints Arcter::popAndDraw(Interpreter& interpreter) {
  const double radius = popNumber(interpreter);
  const Point to = popPoint(interpreter);
  const Point corner = popPoint(interpreter);
  converter.path().writePendingMove(converter.content());
  const Corner rounded = roundCorner(converter.path().point(), corner, to, radius);
  std::vector<ArcPiece> pieces;
  if (!rounded.isStraight) {
    const Point centre = rounded.circle.centre;
    const double startAngle = directionOf(centre, rounded.firstTangent);
    // The short way round, whichever side the circle lies on.
    const double turn = directionOf(centre, rounded.secondTangent) - startAngle;
    pieces = cornerPieces(rounded.circle, startAngle, std::remainder(turn, 2 * std::numbers::pi));
  }
  converter.path().writeLine(converter.content(), rounded.firstTangent);
  writePieces(converter, pieces);
  return {rounded.firstTangent, rounded.secondTangent};
}

void ArcOperator::execute(Interpreter& interpreter) {
  popAndDraw(interpreter, Direction::kCounterclockwise);
}

void ArcnOperator::execute(Interpreter& interpreter) {
  popAndDraw(interpreter, Direction::kClockwise);
}

void ArctOperator::execute(Interpreter& interpreter) {
  popAndDraw(interpreter);
}

void ArctoOperator::execute(Interpreter& interpreter) {
  const TangentPoints tangents = popAndDraw(interpreter);
  // Also when the corner stayed: both tangent points are the corner then.
  for (const double coordinate : {tangents.first.x, tangents.first.y, tangents.second.x, tangents.second.y}) {
    interpreter.pushReal(coordinate);
  }
}

}  // namespace quillpress
