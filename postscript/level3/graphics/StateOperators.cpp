#include <algorithm>
#include <cmath>

#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

// A graphics state as an object of the language.
class KeptState final : public Foreign {
 public:
  explicit KeptState(const GraphicsState& kept) : state(kept) {}
  void trace(Tracer& tracer) const override { state.trace(tracer); }
  std::unique_ptr<Foreign> snapshot() const override { return std::make_unique<KeptState>(state); }
  void assign(const Foreign& other) override { state = static_cast<const KeptState&>(other).state; }

  GraphicsState state;
};

KeptState& keptStateOf(const Object& object) {
  return static_cast<KeptState&>(object.foreignStorage()->contents());
}

void gsave(Interpreter& interpreter) {
  graphicsOf(interpreter).gsave();
}
void grestore(Interpreter& interpreter) {
  graphicsOf(interpreter).grestore();
}
void grestoreAll(Interpreter& interpreter) {
  graphicsOf(interpreter).grestoreAll();
}
void initGraphics(Interpreter& interpreter) {
  graphicsOf(interpreter).initGraphics();
}

// -> gstate
void newGState(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().push(
      interpreter.memory().newForeign(Type::kGState, std::make_unique<KeptState>(stateOf(interpreter))));
}

// gstate -> gstate
void currentGState(Interpreter& interpreter) {
  const Object& object = interpreter.operands().top();
  if (!object.isWritable()) raise(ErrorName::kInvalidAccess);
  interpreter.memory().willChange(*object.storage());
  keptStateOf(object).state = stateOf(interpreter);
}

// gstate ->
void setGState(Interpreter& interpreter) {
  graphicsOf(interpreter).setState(keptStateOf(interpreter.operands().top()).state);
  interpreter.operands().pop();
}

double popNumber(Interpreter& interpreter) {
  const double number = interpreter.operands().top().asNumber();
  interpreter.operands().pop();
  return number;
}

void pushNumber(Interpreter& interpreter, double number) {
  interpreter.operands().push(realOf(number));
}

// num ->
void setLineWidth(Interpreter& interpreter) {
  stateOf(interpreter).line.width = std::abs(popNumber(interpreter));
}
void currentLineWidth(Interpreter& interpreter) {
  pushNumber(interpreter, stateOf(interpreter).line.width);
}

// int ->
void setLineCap(Interpreter& interpreter) {
  const std::int64_t cap = interpreter.operands().top().asInteger();
  if (cap < 0 || cap > 2) raise(ErrorName::kRangeCheck);
  stateOf(interpreter).line.cap = static_cast<LineCap>(cap);
  interpreter.operands().pop();
}
void currentLineCap(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(static_cast<int>(stateOf(interpreter).line.cap)));
}

// int ->
void setLineJoin(Interpreter& interpreter) {
  const std::int64_t join = interpreter.operands().top().asInteger();
  if (join < 0 || join > 2) raise(ErrorName::kRangeCheck);
  stateOf(interpreter).line.join = static_cast<LineJoin>(join);
  interpreter.operands().pop();
}
void currentLineJoin(Interpreter& interpreter) {
  interpreter.operands().push(Object::integer(static_cast<int>(stateOf(interpreter).line.join)));
}

// num ->
void setMiterLimit(Interpreter& interpreter) {
  if (!(interpreter.operands().top().asNumber() >= 1)) raise(ErrorName::kRangeCheck);
  stateOf(interpreter).line.miterLimit = popNumber(interpreter);
}
void currentMiterLimit(Interpreter& interpreter) {
  pushNumber(interpreter, stateOf(interpreter).line.miterLimit);
}

// array offset ->
void setDash(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object array = operands.top(1);
  if (!array.isReadable()) raise(ErrorName::kInvalidAccess);
  DashPattern dash;
  double sum = 0;
  for (const Object& element : elementsOf(array)) {
    const double length = numberOf(element);
    if (!(length >= 0)) raise(ErrorName::kRangeCheck);
    dash.lengths.push_back(length);
    sum += length;
  }
  if (!dash.lengths.empty() && sum == 0) raise(ErrorName::kRangeCheck);
  dash.offset = operands.top().asNumber();
  stateOf(interpreter).line.dash = std::move(dash);
  operands.pop(2);
}

// Jobs write lengths as integers as a rule, and expect to find them so.
Object plainNumber(double value) {
  constexpr double kGreatest = 1e9;
  return value == std::floor(value) && std::abs(value) < kGreatest
             ? Object::integer(static_cast<std::int64_t>(value))
             : realOf(value);
}

// -> array offset
void currentDash(Interpreter& interpreter) {
  interpreter.operands().require(2);
  const DashPattern& dash = stateOf(interpreter).line.dash;
  const Object array = interpreter.memory().newArray(dash.lengths.size());
  for (std::uint32_t index = 0; index < dash.lengths.size(); ++index) {
    interpreter.memory().setElement(array, index, plainNumber(dash.lengths[index]));
  }
  interpreter.operands().push(array);
  pushNumber(interpreter, dash.offset);
}

// num ->           Kept within what PDF allows.
void setFlat(Interpreter& interpreter) {
  stateOf(interpreter).flatness = std::min(std::max(popNumber(interpreter), 0.2), 100.0);
}
void currentFlat(Interpreter& interpreter) {
  pushNumber(interpreter, stateOf(interpreter).flatness);
}

// num ->
void setSmoothness(Interpreter& interpreter) {
  stateOf(interpreter).smoothness = std::min(std::max(popNumber(interpreter), 0.0), 1.0);
}
void currentSmoothness(Interpreter& interpreter) {
  pushNumber(interpreter, stateOf(interpreter).smoothness);
}

bool popBoolean(Interpreter& interpreter) {
  const bool value = interpreter.operands().top().asBoolean();
  interpreter.operands().pop();
  return value;
}

// bool ->
void setStrokeAdjust(Interpreter& interpreter) {
  stateOf(interpreter).rare.strokeAdjust = popBoolean(interpreter);
}
void currentStrokeAdjust(Interpreter& interpreter) {
  interpreter.operands().push(Object::boolean(stateOf(interpreter).rare.strokeAdjust));
}
void setOverprint(Interpreter& interpreter) {
  stateOf(interpreter).rare.overprint = popBoolean(interpreter);
}
void currentOverprint(Interpreter& interpreter) {
  interpreter.operands().push(Object::boolean(stateOf(interpreter).rare.overprint));
}

// name ->       Not of the language, but programs that write for Ghostscript use it unasked.
void setBlendMode(Interpreter& interpreter) {
  const std::optional<BlendMode> mode = blendModeOf(interpreter.operands().top().asName()->text());
  if (!mode) raise(ErrorName::kRangeCheck);
  stateOf(interpreter).rare.blendMode = *mode;
  interpreter.operands().pop();
}

constexpr OperatorRow kStateOperators[] = {
    {"gsave", "", gsave},
    {"grestore", "", grestore},
    {"grestoreall", "", grestoreAll},
    {"initgraphics", "", initGraphics},
    {"gstate", "", newGState},
    {"currentgstate", "gstate", currentGState},
    {"setgstate", "gstate", setGState},
    {"setlinewidth", "num", setLineWidth},
    {"currentlinewidth", "", currentLineWidth},
    {"setlinecap", "int", setLineCap},
    {"currentlinecap", "", currentLineCap},
    {"setlinejoin", "int", setLineJoin},
    {"currentlinejoin", "", currentLineJoin},
    {"setmiterlimit", "num", setMiterLimit},
    {"currentmiterlimit", "", currentMiterLimit},
    {"setdash", "array num", setDash},
    {"currentdash", "", currentDash},
    {"setflat", "num", setFlat},
    {"currentflat", "", currentFlat},
    {"setsmoothness", "num", setSmoothness},
    {"currentsmoothness", "", currentSmoothness},
    {"setstrokeadjust", "bool", setStrokeAdjust},
    {"currentstrokeadjust", "", currentStrokeAdjust},
    {"setoverprint", "bool", setOverprint},
    {"currentoverprint", "", currentOverprint},
    {".setblendmode", "name", setBlendMode},
};

}  // namespace

void addStateOperators(Interpreter& interpreter) {
  interpreter.addOperators(kStateOperators);
}

}  // namespace quillpress::level3
