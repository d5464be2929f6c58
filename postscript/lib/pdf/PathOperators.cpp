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

CurvePoints popCurve(Interpreter& interpreter) {
  const Point end = popPoint(interpreter);
  const Point control2 = popPoint(interpreter);
  const Point control1 = popPoint(interpreter);
  return {control1, control2, end};
}

}  // namespace

void NewpathOperator::execute(Interpreter& /*interpreter*/) {
  converter.abandonPath();
}

void CurrentpointOperator::execute(Interpreter& interpreter) {
  // Kept: told in the user space in which it was made, whatever user space has become since.
  const Point point = converter.state().currentPoint;
  interpreter.pushReal(point.x);
  interpreter.pushReal(point.y);
}

void MovetoOperator::execute(Interpreter& interpreter) {
  converter.moveTo(popPoint(interpreter));
}

void RmovetoOperator::execute(Interpreter& interpreter) {
  const Point offset = popPoint(interpreter);
  converter.moveTo(converter.state().currentPoint + offset);
}

void LinetoOperator::execute(Interpreter& interpreter) {
  const Point point = popPoint(interpreter);
  converter.writePendingMove();
  converter.writeLine(point);
}

void RlinetoOperator::execute(Interpreter& interpreter) {
  const Point offset = popPoint(interpreter);
  converter.writePendingMove();
  converter.writeLine(converter.state().currentPoint + offset);
}

void CurvetoOperator::execute(Interpreter& interpreter) {
  const CurvePoints points = popCurve(interpreter);
  converter.writePendingMove();
  converter.writeCurve(points.control1, points.control2, points.end);
}

void RcurvetoOperator::execute(Interpreter& interpreter) {
  const CurvePoints offsets = popCurve(interpreter);
  converter.writePendingMove();
  const Point origin = converter.state().currentPoint;
  converter.writeCurve(origin + offsets.control1, origin + offsets.control2, origin + offsets.end);
}

void ClosepathOperator::execute(Interpreter& /*interpreter*/) {
  converter.writeClosePath();
}

}  // namespace quillpress
