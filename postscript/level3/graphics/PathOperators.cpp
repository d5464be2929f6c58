#include "postscript/level3/geometry/Arc.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

// The point whose y is `index` below the top.
Point operandPoint(const ObjectStack& operands, std::size_t index) {
  return {operands.top(index + 1).asNumber(), operands.top(index).asNumber()};
}

Point toDevice(Interpreter& interpreter, std::size_t index) {
  return stateOf(interpreter).ctm.apply(operandPoint(interpreter.operands(), index));
}

// A distance from the current point.
Point relative(Interpreter& interpreter, std::size_t index) {
  Graphics& graphics = graphicsOf(interpreter);
  return graphics.currentPoint() +
         graphics.state().ctm.applyToDistance(operandPoint(interpreter.operands(), index));
}

void newPath(Interpreter& interpreter) {
  stateOf(interpreter).path.clear();
  stateOf(interpreter).pathBounds.reset();
}

// x y ->
void moveTo(Interpreter& interpreter) {
  graphicsOf(interpreter).moveTo(toDevice(interpreter, 0));
  interpreter.operands().pop(2);
}
void lineTo(Interpreter& interpreter) {
  graphicsOf(interpreter).lineTo(toDevice(interpreter, 0));
  interpreter.operands().pop(2);
}
// dx dy ->
void rMoveTo(Interpreter& interpreter) {
  graphicsOf(interpreter).moveTo(relative(interpreter, 0));
  interpreter.operands().pop(2);
}
void rLineTo(Interpreter& interpreter) {
  graphicsOf(interpreter).lineTo(relative(interpreter, 0));
  interpreter.operands().pop(2);
}

// x1 y1 x2 y2 x3 y3 ->
void curveTo(Interpreter& interpreter) {
  graphicsOf(interpreter)
      .curveTo(toDevice(interpreter, 4), toDevice(interpreter, 2), toDevice(interpreter, 0));
  interpreter.operands().pop(6);
}
void rCurveTo(Interpreter& interpreter) {
  graphicsOf(interpreter)
      .curveTo(relative(interpreter, 4), relative(interpreter, 2), relative(interpreter, 0));
  interpreter.operands().pop(6);
}

void closePath(Interpreter& interpreter) {
  stateOf(interpreter).path.close();
}

// x y radius angle1 angle2 ->
void appendArcOperands(Interpreter& interpreter, Turn turn) {
  const ObjectStack& operands = interpreter.operands();
  Graphics& graphics = graphicsOf(interpreter);
  Path arc;
  if (const auto current = graphics.state().path.currentPoint()) arc.moveTo(*current);
  appendArc(arc, graphics.state().ctm, operandPoint(operands, 3), operands.top(2).asNumber(),
            operands.top(1).asNumber(), operands.top(0).asNumber(), turn);
  // Through the checked functions, so that the arc stays within setbbox.
  const bool isJoined = !graphics.state().path.isEmpty();
  std::size_t point = 0;
  for (std::size_t index = 0; index < arc.segmentCount(); ++index) {
    const Point* points = arc.points().data() + point;
    switch (arc.kinds()[index]) {
      case SegmentKind::kMove:
        if (!isJoined) graphics.moveTo(points[0]);
        break;
      case SegmentKind::kLine:
        graphics.lineTo(points[0]);
        break;
      case SegmentKind::kCurve:
        graphics.curveTo(points[0], points[1], points[2]);
        break;
      case SegmentKind::kClose:
        break;
    }
    point += pointCount(arc.kinds()[index]);
  }
  interpreter.operands().pop(5);
}
void arc(Interpreter& interpreter) {
  appendArcOperands(interpreter, Turn::kAnticlockwise);
}
void arcN(Interpreter& interpreter) {
  appendArcOperands(interpreter, Turn::kClockwise);
}

// x1 y1 x2 y2 radius
TangentArc appendTangentOperands(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  Graphics& graphics = graphicsOf(interpreter);
  const Matrix& ctm = graphics.state().ctm;
  const Point from = inverseOf(ctm).apply(graphics.currentPoint());
  const TangentArc arc =
      tangentArc(from, operandPoint(operands, 3), operandPoint(operands, 1), operands.top().asNumber());
  appendTangentArc(graphics.state().path, ctm, arc);
  return arc;
}

// x1 y1 x2 y2 radius ->
void arcT(Interpreter& interpreter) {
  appendTangentOperands(interpreter);
  interpreter.operands().pop(5);
}

// x1 y1 x2 y2 radius -> xt1 yt1 xt2 yt2
void arcTo(Interpreter& interpreter) {
  const TangentArc arc = appendTangentOperands(interpreter);
  ObjectStack& operands = interpreter.operands();
  operands.pop();
  operands.top(3) = realOf(arc.first.x);
  operands.top(2) = realOf(arc.first.y);
  operands.top(1) = realOf(arc.second.x);
  operands.top(0) = realOf(arc.second.y);
}

// llx lly urx ury ->
void setBBox(Interpreter& interpreter) {
  const Point low = operandPoint(interpreter.operands(), 2);
  const Point high = operandPoint(interpreter.operands(), 0);
  if (low.x > high.x || low.y > high.y) raise(ErrorName::kRangeCheck);
  GraphicsState& state = stateOf(interpreter);
  Box bounds = transformed(Box::ofCorners(low, high), state.ctm);
  if (state.pathBounds) bounds.include(*state.pathBounds);
  state.pathBounds = bounds;
  interpreter.operands().pop(4);
}

constexpr OperatorRow kPathOperators[] = {
    {"newpath", "", newPath},
    {"moveto", "num num", moveTo},
    {"rmoveto", "num num", rMoveTo},
    {"lineto", "num num", lineTo},
    {"rlineto", "num num", rLineTo},
    {"curveto", "num num num num num num", curveTo},
    {"rcurveto", "num num num num num num", rCurveTo},
    {"closepath", "", closePath},
    {"arc", "num num num num num", arc},
    {"arcn", "num num num num num", arcN},
    {"arct", "num num num num num", arcT},
    {"arcto", "num num num num num", arcTo},
    {"setbbox", "num num num num", setBBox},
};

}  // namespace

void addPathOperators(Interpreter& interpreter) {
  interpreter.addOperators(kPathOperators);
}

}  // namespace quillpress::level3
