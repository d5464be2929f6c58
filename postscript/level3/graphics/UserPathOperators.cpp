#include <algorithm>

#include "postscript/level3/geometry/Flattening.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/graphics/UserPath.h"

namespace quillpress::level3 {

namespace {

// userpath ->
void uAppend(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const Path path = userPath(interpreter, interpreter.operands().top(), graphics.state().ctm);
  graphics.state().path.append(path);
  interpreter.operands().pop();
}

void fillUserPath(Interpreter& interpreter, FillRule rule) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.fill(userPath(interpreter, interpreter.operands().top(), graphics.state().ctm), rule);
  interpreter.operands().pop();
}
// userpath ->
void uFill(Interpreter& interpreter) {
  fillUserPath(interpreter, FillRule::kNonzero);
}
void uEoFill(Interpreter& interpreter) {
  fillUserPath(interpreter, FillRule::kEvenOdd);
}

// A user path, and perhaps above it a matrix for the pen.
struct Strokable {
  Path path;
  Matrix pen;
  std::size_t operands;
};

Strokable strokable(Interpreter& interpreter) {
  const ObjectStack& operands = interpreter.operands();
  const Matrix ctm = stateOf(interpreter).ctm;
  if (mayBeUserPath(operands.top())) return {userPath(interpreter, operands.top(), ctm), ctm, 1};
  const Matrix matrix = matrixOf(operands.top());
  requireOperands(interpreter, 2);
  return {userPath(interpreter, operands.top(1), ctm), matrix * ctm, 2};
}

// userpath [matrix] ->
void uStroke(Interpreter& interpreter) {
  const Strokable operand = strokable(interpreter);
  graphicsOf(interpreter).stroke(operand.path, operand.pen);
  interpreter.operands().pop(operand.operands);
}
void uStrokePath(Interpreter& interpreter) {
  const Strokable operand = strokable(interpreter);
  GraphicsState& state = stateOf(interpreter);
  state.pathBounds.reset();
  state.path = strokeOutline(operand.path, state.line, operand.pen, std::max(state.flatness, 0.2));
  interpreter.operands().pop(operand.operands);
}

// Drawing is fast enough without a cache.
void uCache(Interpreter&) {}

// -> mark size most paths mostpaths length mostlength limit
void uCacheStatus(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(6);
  operands.push(Object::mark());
  for (int count = 0; count < 5; ++count) operands.push(Object::integer(0));
}

// mark ... limit ->
void setUCacheParams(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  std::size_t count = 0;
  while (count < operands.depth() && !operands.top(count).isMark()) {
    if (!operands.top(count).isInteger()) raise(ErrorName::kTypeCheck);
    ++count;
  }
  if (count == operands.depth()) raise(ErrorName::kUnmatchedMark);
  operands.pop(count + 1);
}

// Writes the current path as an array.
class UserPathWriter {
 public:
  UserPathWriter(Interpreter& interpreter, const Matrix& toUser)
      : interpreter_(interpreter), toUser_(toUser) {}

  void box(const Box& box) {
    for (const double number : {box.left, box.bottom, box.right, box.top}) elements.push_back(realOf(number));
    name("setbbox");
  }
  void move(Point point) { add({point}, "moveto"); }
  void line(Point point) { add({point}, "lineto"); }
  void curve(Point control1, Point control2, Point end) { add({control1, control2, end}, "curveto"); }
  void close() { name("closepath"); }
  void name(std::string_view text) {
    elements.push_back(Object::executableName(interpreter_.memory().name(text)));
  }

  std::vector<Object> elements;

 private:
  void add(std::initializer_list<Point> points, std::string_view text) {
    for (const Point point : points) {
      const Point user = toUser_.apply(point);
      elements.push_back(realOf(user.x));
      elements.push_back(realOf(user.y));
    }
    name(text);
  }

  Interpreter& interpreter_;
  const Matrix& toUser_;
};

// bool -> userpath
void uPath(Interpreter& interpreter) {
  const GraphicsState& state = stateOf(interpreter);
  const Matrix toUser = inverseOf(state.ctm);
  UserPathWriter writer(interpreter, toUser);
  if (interpreter.operands().top().asBoolean()) writer.name("ucache");
  const bool isNothing = !state.pathBounds && state.path.isEmpty();
  const Box device = state.pathBounds ? *state.pathBounds : state.path.boundingBox();
  writer.box(isNothing ? Box{0, 0, 0, 0} : transformed(device, toUser));
  state.path.visit(writer);
  interpreter.operands().top() = interpreter.memory().newArray(writer.elements).asExecutable();
}

constexpr OperatorRow kUserPathOperators[] = {
    {"uappend", "array", uAppend},
    {"ufill", "array", uFill},
    {"ueofill", "array", uEoFill},
    {"ustroke", "array", uStroke},
    {"ustrokepath", "array", uStrokePath},
    {"upath", "bool", uPath},
    {"ucache", "", uCache},
    {"ucachestatus", "", uCacheStatus},
    {"setucacheparams", "", setUCacheParams},
};

}  // namespace

void addUserPathOperators(Interpreter& interpreter) {
  interpreter.addOperators(kUserPathOperators);
}

}  // namespace quillpress::level3
