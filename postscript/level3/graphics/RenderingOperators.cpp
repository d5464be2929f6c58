#include <algorithm>
#include <array>

#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

// Halftones, transfer functions, black generation: a PDF page does not take them over. They are kept in the
// graphics state, and those that would change what is seen are counted.

namespace quillpress::level3 {

namespace {

std::shared_ptr<RenderingParameters> changedRendering(Interpreter& interpreter) {
  auto copy = std::make_shared<RenderingParameters>(*stateOf(interpreter).rendering);
  stateOf(interpreter).rendering = copy;
  return copy;
}

const RenderingParameters& rendering(Interpreter& interpreter) {
  return *stateOf(interpreter).rendering;
}

void note(Interpreter& interpreter, Unkept kind) {
  graphicsOf(interpreter).unkept().add(kind);
}

// An empty procedure stands where a job has set none.
Object procedureOr(Interpreter& interpreter, const Object& procedure) {
  return procedure.isNull() ? interpreter.memory().newArray(std::size_t{0}).asExecutable() : procedure;
}

void requireScreen(const ObjectStack& operands, std::size_t first) {
  if (!operands.top(first + 2).isNumber() || !operands.top(first + 1).isNumber())
    raise(ErrorName::kTypeCheck);
  const Object& spot = operands.top(first);
  if (!spot.isProcedure() && !spot.isDictionary()) raise(ErrorName::kTypeCheck);
}

std::array<Object, 3> screenAt(const ObjectStack& operands, std::size_t first) {
  return {realOf(operands.top(first + 2).asNumber()), realOf(operands.top(first + 1).asNumber()),
          operands.top(first)};
}

// frequency angle proc|halftone ->
void setScreen(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  requireScreen(operands, 0);
  const auto parameters = changedRendering(interpreter);
  parameters->screens.fill(screenAt(operands, 0));
  parameters->halftone = {};
  note(interpreter, Unkept::kHalftone);
  operands.pop(3);
}

// Four screens: red, green, blue, gray.
void setColorScreen(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  requireOperands(interpreter, 12);
  for (std::size_t screen = 0; screen < 4; ++screen) requireScreen(operands, 3 * screen);
  const auto parameters = changedRendering(interpreter);
  for (std::size_t screen = 0; screen < 4; ++screen) {
    parameters->screens[3 - screen] = screenAt(operands, 3 * screen);
  }
  parameters->halftone = {};
  note(interpreter, Unkept::kHalftone);
  operands.pop(12);
}

void pushScreen(Interpreter& interpreter, const std::array<Object, 3>& screen) {
  ObjectStack& operands = interpreter.operands();
  const bool isSet = !screen[2].isNull();
  operands.push(isSet ? screen[0] : Object::real(60));
  operands.push(isSet ? screen[1] : Object::real(45));
  operands.push(procedureOr(interpreter, screen[2]));
}

// -> frequency angle proc
void currentScreen(Interpreter& interpreter) {
  interpreter.operands().require(3);
  pushScreen(interpreter, rendering(interpreter).screens[3]);
}
void currentColorScreen(Interpreter& interpreter) {
  interpreter.operands().require(12);
  const auto screens = rendering(interpreter).screens;
  for (const auto& screen : screens) pushScreen(interpreter, screen);
}

// halftone ->
void setHalftone(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  Dictionary& halftone = *operands.top().asDictionary();
  if (!halftone.isReadable()) raise(ErrorName::kInvalidAccess);
  const Object* type = halftone.find(interpreter.memory().name("HalftoneType"));
  if (type == nullptr) raise(ErrorName::kUndefined);
  if (!type->isInteger()) raise(ErrorName::kTypeCheck);
  constexpr std::array<std::int64_t, 8> kHalftoneTypes{1, 2, 3, 4, 5, 6, 10, 16};
  if (std::find(kHalftoneTypes.begin(), kHalftoneTypes.end(), type->asInteger()) == kHalftoneTypes.end()) {
    raise(ErrorName::kRangeCheck);
  }
  // One of several colours has one for all that it does not name.
  const bool isForSeveral = type->asInteger() == 5;
  if (isForSeveral && halftone.find(interpreter.memory().name("Default")) == nullptr) {
    raise(ErrorName::kRangeCheck);
  }
  changedRendering(interpreter)->halftone = operands.top();
  note(interpreter, Unkept::kHalftone);
  operands.pop();
}

// -> halftone         A dictionary that says what setscreen has said, when no halftone was set.
void currentHalftone(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(1);
  if (!rendering(interpreter).halftone.isNull()) {
    operands.push(rendering(interpreter).halftone);
    return;
  }
  VirtualMemory& memory = interpreter.memory();
  const Object dictionary = memory.newDictionary(4);
  const auto& screen = rendering(interpreter).screens[3];
  const bool isSet = !screen[2].isNull();
  memory.put(*dictionary.asDictionary(), memory.name("HalftoneType"), Object::integer(1));
  memory.put(*dictionary.asDictionary(), memory.name("Frequency"), isSet ? screen[0] : Object::real(60));
  memory.put(*dictionary.asDictionary(), memory.name("Angle"), isSet ? screen[1] : Object::real(45));
  memory.put(*dictionary.asDictionary(), memory.name("SpotFunction"), procedureOr(interpreter, screen[2]));
  operands.push(dictionary);
}

void noteTransfer(Interpreter& interpreter, const Object& procedure) {
  // An empty procedure changes nothing.
  if (procedure.length() > 0) note(interpreter, Unkept::kTransferFunction);
}

// proc ->
void setTransfer(Interpreter& interpreter) {
  const Object procedure = interpreter.operands().top();
  changedRendering(interpreter)->transfer.fill(procedure);
  noteTransfer(interpreter, procedure);
  interpreter.operands().pop();
}
// redproc greenproc blueproc grayproc ->
void setColorTransfer(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const auto parameters = changedRendering(interpreter);
  for (std::size_t index = 0; index < 4; ++index) {
    parameters->transfer[index] = operands.top(3 - index);
    noteTransfer(interpreter, operands.top(3 - index));
  }
  operands.pop(4);
}
// -> proc
void currentTransfer(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().push(procedureOr(interpreter, rendering(interpreter).transfer[3]));
}
void currentColorTransfer(Interpreter& interpreter) {
  interpreter.operands().require(4);
  const auto transfer = rendering(interpreter).transfer;
  for (const Object& procedure : transfer) interpreter.operands().push(procedureOr(interpreter, procedure));
}

// proc ->
void setBlackGeneration(Interpreter& interpreter) {
  changedRendering(interpreter)->blackGeneration = interpreter.operands().top();
  note(interpreter, Unkept::kBlackGeneration);
  interpreter.operands().pop();
}
void currentBlackGeneration(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().push(procedureOr(interpreter, rendering(interpreter).blackGeneration));
}
void setUndercolorRemoval(Interpreter& interpreter) {
  changedRendering(interpreter)->undercolorRemoval = interpreter.operands().top();
  note(interpreter, Unkept::kBlackGeneration);
  interpreter.operands().pop();
}
void currentUndercolorRemoval(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().push(procedureOr(interpreter, rendering(interpreter).undercolorRemoval));
}

// dict ->
void setColorRendering(Interpreter& interpreter) {
  Dictionary& dictionary = *interpreter.operands().top().asDictionary();
  if (!dictionary.isReadable()) raise(ErrorName::kInvalidAccess);
  const Object* type = dictionary.find(interpreter.memory().name("ColorRenderingType"));
  if (type == nullptr) raise(ErrorName::kUndefined);
  if (!type->isInteger()) raise(ErrorName::kTypeCheck);
  if (type->asInteger() != 1) raise(ErrorName::kRangeCheck);
  changedRendering(interpreter)->colorRendering = interpreter.operands().top();
  note(interpreter, Unkept::kColorRendering);
  interpreter.operands().pop();
}
void currentColorRendering(Interpreter& interpreter) {
  interpreter.operands().require(1);
  const Object& kept = rendering(interpreter).colorRendering;
  if (!kept.isNull()) {
    interpreter.operands().push(kept);
    return;
  }
  VirtualMemory& memory = interpreter.memory();
  const Object dictionary = memory.newDictionary(2);
  memory.put(*dictionary.asDictionary(), memory.name("ColorRenderingType"), Object::integer(1));
  interpreter.operands().push(dictionary);
}

constexpr OperatorRow kRenderingOperators[] = {
    {"setscreen", "num num proc|dict", setScreen},
    {"currentscreen", "", currentScreen},
    {"setcolorscreen", "", setColorScreen},
    {"currentcolorscreen", "", currentColorScreen},
    {"sethalftone", "dict", setHalftone},
    {"currenthalftone", "", currentHalftone},
    {"settransfer", "proc", setTransfer},
    {"currenttransfer", "", currentTransfer},
    {"setcolortransfer", "proc proc proc proc", setColorTransfer},
    {"currentcolortransfer", "", currentColorTransfer},
    {"setblackgeneration", "proc", setBlackGeneration},
    {"currentblackgeneration", "", currentBlackGeneration},
    {"setundercolorremoval", "proc", setUndercolorRemoval},
    {"currentundercolorremoval", "", currentUndercolorRemoval},
    {"setcolorrendering", "dict", setColorRendering},
    {"currentcolorrendering", "", currentColorRendering},
};

}  // namespace

void addRenderingOperators(Interpreter& interpreter) {
  interpreter.addOperators(kRenderingOperators);
}

}  // namespace quillpress::level3
