#include "postscript/lib/pdf/PathOperators.h"

namespace quillpress {

namespace {

Point operator+(Point a, Point b) {
  return {a.x + b.x, a.y + b.y};
}

struct CurvePoints {
  Point control1;
  Point control2;
  Point end;
};

// The points come off the stack last first.
CurvePoints popCurve(Interpreter& interpreter) {
  const Point end = popPoint(interpreter);
  const Point control2 = popPoint(interpreter);
  const Point control1 = popPoint(interpreter);
  return {control1, control2, end};
}

}  // namespace

void NewpathOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().abandon(converter.content());
}

void CurrentpointOperator::execute(Interpreter& interpreter) {
  // Kept: told in the user space in which it was made, whatever user space has become since
  // (paths/currentpoint.ps).
  const Point point = converter.path().point();
  interpreter.pushReal(point.x);
  interpreter.pushReal(point.y);
}

void MovetoOperator::execute(Interpreter& interpreter) {
  converter.path().moveTo(popPoint(interpreter));
}

void RmovetoOperator::execute(Interpreter& interpreter) {
  // From the current point even when there is none: a page begins at the origin.
  const Point offset = popPoint(interpreter);
  converter.path().moveTo(converter.path().point() + offset);
}

void LinetoOperator::execute(Interpreter& interpreter) {
  const Point point = popPoint(interpreter);
  converter.path().writePendingMove(converter.content());
  converter.path().writeLine(converter.content(), point);
}

void RlinetoOperator::execute(Interpreter& interpreter) {
  const Point offset = popPoint(interpreter);
  converter.path().writePendingMove(converter.content());
  converter.path().writeLine(converter.content(), converter.path().point() + offset);
}

void CurvetoOperator::execute(Interpreter& interpreter) {
  const CurvePoints points = popCurve(interpreter);
  converter.path().writePendingMove(converter.content());
  converter.path().writeCurve(converter.content(), points.control1, points.control2, points.end);
}

void RcurvetoOperator::execute(Interpreter& interpreter) {
  const CurvePoints offsets = popCurve(interpreter);
  converter.path().writePendingMove(converter.content());
  // All three are relative to where the curve begins, not each to the one before.
  const Point origin = converter.path().point();
  converter.path().writeCurve(converter.content(), origin + offsets.control1, origin + offsets.control2,
                              origin + offsets.end);
}

// Written without a path as well, as the painting operators are; readers ignore it.
void ClosepathOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeClose(converter.content());
}

}  // namespace quillpress
