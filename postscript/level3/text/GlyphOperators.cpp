#include "postscript/level3/colour/ColourSpace.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/GlyphRun.h"
#include "postscript/level3/text/TextOperators.h"

// What the procedure of a glyph calls to say how wide it is, and whether it has colours of its own.

namespace quillpress::level3 {

namespace {

// Throws undefined outside of a glyph's procedure.
GlyphRun& requireRun(Interpreter& interpreter) {
  GlyphRun* const run = fontsOf(interpreter).run();
  if (run == nullptr || run->hasWidth) raise(ErrorName::kUndefined);
  return *run;
}

double numberAt(Interpreter& interpreter, std::size_t fromTop) {
  return interpreter.operands().top(fromTop).asNumber();
}

Point pointAt(Interpreter& interpreter, std::size_t fromTop) {
  return {numberAt(interpreter, fromTop), numberAt(interpreter, fromTop - 1)};
}

// User space, as the procedure has it by now, to the glyph's character space.
Matrix toCharacterSpace(Interpreter& interpreter, const GlyphRun& run) {
  return stateOf(interpreter).ctm * run.fromDevice;
}

// From here on the glyph is a shape in whatever colour is current when it is shown.
void becomeMask(Interpreter& interpreter, GlyphRun& run) {
  run.isMask = true;
  Graphics& graphics = graphicsOf(interpreter);
  GraphicsState& state = graphics.state();
  if (ContentWriter* const content = state.device->canvas->content();
      content != nullptr && content->isEmpty()) {
    content->inheritColour();
  }
  state.colour = std::make_shared<Colour>(graphics.deviceSpace(ColourSpace::Kind::kDeviceGray));
  auto device = std::make_shared<Device>(*state.device);
  device->isUncoloured = true;
  state.device = std::move(device);
}

// wx wy llx lly urx ury ->
void setcachedevice(Interpreter& interpreter) {
  GlyphRun& run = requireRun(interpreter);
  const Matrix matrix = toCharacterSpace(interpreter, run);
  run.hasWidth = true;
  run.advance = matrix.applyToDistance(pointAt(interpreter, 5));
  run.bounds = transformed(Box::ofCorners(pointAt(interpreter, 3), pointAt(interpreter, 1)), matrix);
  becomeMask(interpreter, run);
  interpreter.operands().pop(6);
}

// w0x w0y llx lly urx ury w1x w1y vx vy ->
void setcachedevice2(Interpreter& interpreter) {
  GlyphRun& run = requireRun(interpreter);
  const Matrix matrix = toCharacterSpace(interpreter, run);
  run.hasWidth = true;
  run.hasVertical = true;
  run.advance = matrix.applyToDistance(pointAt(interpreter, 9));
  run.bounds = transformed(Box::ofCorners(pointAt(interpreter, 7), pointAt(interpreter, 5)), matrix);
  run.vertical.advance = matrix.applyToDistance(pointAt(interpreter, 3));
  run.vertical.origin = matrix.applyToDistance(pointAt(interpreter, 1));
  becomeMask(interpreter, run);
  interpreter.operands().pop(10);
}

// wx wy ->
void setcharwidth(Interpreter& interpreter) {
  GlyphRun& run = requireRun(interpreter);
  run.hasWidth = true;
  run.advance = toCharacterSpace(interpreter, run).applyToDistance(pointAt(interpreter, 1));
  interpreter.operands().pop(2);
}

constexpr OperatorRow kGlyphOperators[] = {
    {"setcachedevice", "num num num num num num", setcachedevice},
    {"setcachedevice2", "num num num num num num num num num num", setcachedevice2},
    {"setcharwidth", "num num", setcharwidth},
};

}  // namespace

void addGlyphOperators(Interpreter& interpreter) {
  interpreter.addOperators(kGlyphOperators);
}

}  // namespace quillpress::level3
