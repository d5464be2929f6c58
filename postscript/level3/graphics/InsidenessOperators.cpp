#include <algorithm>

#include "postscript/level3/geometry/Insideness.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/graphics/UserPath.h"

namespace quillpress::level3 {

namespace {

// What is tested against: a point, or the inside of a user path.
struct Probe {
  std::optional<Path> aperture;
  Point point;
  std::size_t operands;

  bool meets(const Path& path, FillRule rule) const {
    return aperture ? paintsInside(path, rule, *aperture) : paintsPixelAt(path, rule, point);
  }
};

// `first` is how far below the top the probe's topmost operand is.
Probe probe(Interpreter& interpreter, std::size_t first) {
  const ObjectStack& operands = interpreter.operands();
  const Matrix ctm = stateOf(interpreter).ctm;
  requireOperands(interpreter, first + 1);
  if (operands.top(first).isArray()) return {userPath(interpreter, operands.top(first), ctm), {}, 1};
  requireOperands(interpreter, first + 2);
  const Point user{numberOf(operands.top(first + 1)), numberOf(operands.top(first))};
  return {std::nullopt, ctm.apply(user), 2};
}

void answer(Interpreter& interpreter, std::size_t operands, bool result) {
  interpreter.operands().pop(operands);
  interpreter.operands().push(Object::boolean(result));
}

void inPath(Interpreter& interpreter, FillRule rule) {
  const Probe tested = probe(interpreter, 0);
  answer(interpreter, tested.operands, tested.meets(stateOf(interpreter).path, rule));
}
// x y -> bool    or  userpath -> bool
void inFill(Interpreter& interpreter) {
  inPath(interpreter, FillRule::kNonzero);
}
void inEoFill(Interpreter& interpreter) {
  inPath(interpreter, FillRule::kEvenOdd);
}
void inStroke(Interpreter& interpreter) {
  const Probe tested = probe(interpreter, 0);
  Graphics& graphics = graphicsOf(interpreter);
  answer(interpreter, tested.operands,
         tested.meets(graphics.strokeOutlineOf(graphics.state().path), FillRule::kNonzero));
}

void inUserPath(Interpreter& interpreter, FillRule rule) {
  const Path path = userPath(interpreter, interpreter.operands().top(), stateOf(interpreter).ctm);
  const Probe tested = probe(interpreter, 1);
  answer(interpreter, tested.operands + 1, tested.meets(path, rule));
}
// x y userpath -> bool    or  userpath1 userpath2 -> bool
void inUFill(Interpreter& interpreter) {
  inUserPath(interpreter, FillRule::kNonzero);
}
void inUEoFill(Interpreter& interpreter) {
  inUserPath(interpreter, FillRule::kEvenOdd);
}

// x y userpath [matrix] -> bool    or  userpath1 userpath2 [matrix] -> bool
void inUStroke(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  const GraphicsState& state = stateOf(interpreter);
  const bool hasMatrix = !mayBeUserPath(operands.top());
  const Matrix pen = hasMatrix ? matrixOf(operands.top()) * state.ctm : state.ctm;
  const std::size_t above = hasMatrix ? 1 : 0;
  requireOperands(interpreter, above + 1);
  const Path path = userPath(interpreter, operands.top(above), state.ctm);
  const Probe tested = probe(interpreter, above + 1);
  const Path outline = strokeOutline(path, state.line, pen, std::max(state.flatness, 0.2));
  answer(interpreter, tested.operands + above + 1, tested.meets(outline, FillRule::kNonzero));
}

constexpr OperatorRow kInsidenessOperators[] = {
    {"infill", "", inFill},        {"ineofill", "", inEoFill},        {"instroke", "", inStroke},
    {"inufill", "array", inUFill}, {"inueofill", "array", inUEoFill}, {"inustroke", "array", inUStroke},
};

}  // namespace

void addInsidenessOperators(Interpreter& interpreter) {
  interpreter.addOperators(kInsidenessOperators);
}

}  // namespace quillpress::level3
