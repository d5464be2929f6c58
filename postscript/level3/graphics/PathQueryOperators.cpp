#include "postscript/level3/geometry/Flattening.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

void pushPoint(Interpreter& interpreter, Point point) {
  interpreter.operands().push(realOf(point.x));
  interpreter.operands().push(realOf(point.y));
}

// -> x y
void currentPoint(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const Point point = inverseOf(graphics.state().ctm).apply(graphics.currentPoint());
  interpreter.operands().require(2);
  pushPoint(interpreter, point);
}

void flattenPath(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  state.path = flattened(state.path, state.flatness);
}

void reversePath(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  state.path = state.path.reversed();
}

void strokePath(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.state().path = graphics.strokeOutlineOf(graphics.state().path);
}

// -> llx lly urx ury
void pathBBox(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  interpreter.operands().require(4);
  if (state.path.isEmpty() && !state.pathBounds) raise(ErrorName::kNoCurrentPoint);
  const Box device = state.pathBounds ? *state.pathBounds : state.path.boundingBox();
  const Box user = transformed(device, inverseOf(state.ctm));
  pushPoint(interpreter, {user.left, user.bottom});
  pushPoint(interpreter, {user.right, user.top});
}

// Makes a procedure that gives every segment, in user space, to one of four procedures.
class Enumeration {
 public:
  Enumeration(Interpreter& interpreter, const Matrix& toUser) : interpreter_(interpreter), toUser_(toUser) {
    const Object* exec = interpreter.systemDictionary().find(interpreter.memory().name("exec"));
    exec_ = *exec;
  }

  void move(Point point) { add({point}, 3); }
  void line(Point point) { add({point}, 2); }
  void curve(Point control1, Point control2, Point end) { add({control1, control2, end}, 1); }
  void close() { add({}, 0); }

  Object procedure() const { return interpreter_.memory().newArray(elements_).asExecutable(); }

 private:
  void add(std::initializer_list<Point> points, std::size_t operand) {
    for (const Point point : points) {
      const Point user = toUser_.apply(point);
      elements_.push_back(realOf(user.x));
      elements_.push_back(realOf(user.y));
    }
    elements_.push_back(interpreter_.operands().top(operand));
    elements_.push_back(exec_);
  }

  Interpreter& interpreter_;
  const Matrix& toUser_;
  Object exec_;
  std::vector<Object> elements_;
};

// move line curve close ->     The procedures meet the path as it was at the beginning. It is a loop of one
// turn, so that `exit` ends it.
void pathForAll(Interpreter& interpreter) {
  const GraphicsState& state = stateOf(interpreter);
  const Matrix toUser = inverseOf(state.ctm);
  Enumeration enumeration(interpreter, toUser);
  state.path.visit(enumeration);
  const Object procedure = enumeration.procedure();
  const Object repeat = *interpreter.systemDictionary().find(interpreter.memory().name("repeat"));
  interpreter.execution().require(1);
  ObjectStack& operands = interpreter.operands();
  operands.pop(4);
  operands.push(Object::integer(1));
  operands.push(procedure);
  interpreter.execution().push(repeat);
}

constexpr OperatorRow kPathQueryOperators[] = {
    {"currentpoint", "", currentPoint}, {"flattenpath", "", flattenPath},
    {"reversepath", "", reversePath},   {"strokepath", "", strokePath},
    {"pathbbox", "", pathBBox},         {"pathforall", "proc proc proc proc", pathForAll},
};

}  // namespace

void addPathQueryOperators(Interpreter& interpreter) {
  interpreter.addOperators(kPathQueryOperators);
}

}  // namespace quillpress::level3
