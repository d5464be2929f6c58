#include "pdf/PathOperators.h"

namespace quillpress {

namespace {

Point operator+(Point a, Point b) {
  return {a.x + b.x, a.y + b.y};
}

void lineTo(Postscript2Pdf& converter, Point point) {
  converter.writePendingMove();
  converter.writeLine(point);
}

// Pops three points and draws the curve through them, each moved by `origin`.
void popCurve(Interpreter& interpreter, Postscript2Pdf& converter, Point origin) {
  const Point end = popPoint(interpreter);
  const Point control2 = popPoint(interpreter);
  const Point control1 = popPoint(interpreter);
  converter.writePendingMove();
  converter.writeCurve(origin + control1, origin + control2, origin + end);
}

}  // namespace

void NewpathOperator::execute(Interpreter& /*interpreter*/) {
  converter.abandonPath();
}

void CurrentpointOperator::execute(Interpreter& interpreter) {
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
  lineTo(converter, popPoint(interpreter));
}

void RlinetoOperator::execute(Interpreter& interpreter) {
  const Point offset = popPoint(interpreter);
  lineTo(converter, converter.state().currentPoint + offset);
}

void CurvetoOperator::execute(Interpreter& interpreter) {
  popCurve(interpreter, converter, {});
}

void RcurvetoOperator::execute(Interpreter& interpreter) {
  popCurve(interpreter, converter, converter.state().currentPoint);
}

void ClosepathOperator::execute(Interpreter& /*interpreter*/) {
  converter.writeClosePath();
}

}  // namespace quillpress
