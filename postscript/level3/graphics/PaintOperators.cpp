#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/graphics/RectangleOperands.h"
#include "postscript/level3/graphics/Shading.h"

namespace quillpress::level3 {

namespace {

void clearPath(GraphicsState& state) {
  state.path.clear();
  state.pathBounds.reset();
}

void fillPath(Interpreter& interpreter, FillRule rule) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.fill(graphics.state().path, rule);
  clearPath(graphics.state());
}
void fill(Interpreter& interpreter) {
  fillPath(interpreter, FillRule::kNonzero);
}
void eoFill(Interpreter& interpreter) {
  fillPath(interpreter, FillRule::kEvenOdd);
}

void stroke(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.stroke(graphics.state().path);
  clearPath(graphics.state());
}

// x y width height ->    or  numarray|numstring ->
void rectFill(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const RectangleOperands rectangles = rectangleOperands(interpreter, 0, graphics.state().ctm);
  graphics.fill(rectangles.path, FillRule::kNonzero);
  interpreter.operands().pop(rectangles.operands);
}

// Six numbers above something that rectangles can be read from are a matrix, not a rectangle and a half.
bool hasPenMatrix(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  if (operands.depth() < 2 || !operands.top().isArray() || operands.top().length() != 6) return false;
  return operands.top(1).isNumber() || operands.top(1).isArray() || operands.top(1).isString();
}

// x y width height [matrix] ->    or  numarray|numstring [matrix] ->
void rectStroke(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const bool hasMatrix = hasPenMatrix(interpreter);
  const Matrix& ctm = graphics.state().ctm;
  const Matrix pen = hasMatrix ? matrixOf(interpreter.operands().top()) * ctm : ctm;
  const RectangleOperands rectangles = rectangleOperands(interpreter, hasMatrix ? 1 : 0, ctm);
  graphics.stroke(rectangles.path, pen);
  interpreter.operands().pop(rectangles.operands + (hasMatrix ? 1 : 0));
}

// shading ->
void shFill(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const ShadingObject shading =
      writeShading(interpreter, interpreter.operands().top(), graphics.document().file());
  if (ContentWriter* content = graphics.content()) {
    const GraphicsState& state = graphics.state();
    const Box bounds = shading.bounds ? transformed(*shading.bounds, state.ctm) : content->area();
    content->shade(shading.number, state.ctm, bounds, state.clip, state.rare);
  }
  interpreter.operands().pop();
}

constexpr OperatorRow kPaintOperators[] = {
    {"fill", "", fill},         {"eofill", "", eoFill},         {"stroke", "", stroke},
    {"rectfill", "", rectFill}, {"rectstroke", "", rectStroke}, {"shfill", "dict", shFill},
};

}  // namespace

void addPaintOperators(Interpreter& interpreter) {
  interpreter.addOperators(kPaintOperators);
}

}  // namespace quillpress::level3
