#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/RectangleOperands.h"

namespace quillpress::level3 {

namespace {

void clip(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.clipTo(graphics.state().path, FillRule::kNonzero);
}
void eoClip(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.clipTo(graphics.state().path, FillRule::kEvenOdd);
}
void initClip(Interpreter& interpreter) {
  graphicsOf(interpreter).initClip();
}

// x y width height ->    or  numarray|numstring ->
void rectClip(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const RectangleOperands rectangles = rectangleOperands(interpreter, 0, graphics.state().ctm);
  graphics.clipTo(rectangles.path, FillRule::kNonzero);
  graphics.state().path.clear();
  graphics.state().pathBounds.reset();
  interpreter.operands().pop(rectangles.operands);
}

// The path of one clip, or of what several share when that is a rectangle. An outline of the rest would need
// areas to be intersected; the innermost path is what programs look at.
void clipPath(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  state.pathBounds.reset();
  state.path = state.clip->path();
  if (state.clip->parent() && asRectangle(state.path, true)) {
    // A rectangle laid over another shape: its box shows what is left at most.
    state.path.clear();
    if (!state.clip->isEmpty()) state.path.appendRectangle(state.clip->bounds());
  }
}

void clipSave(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  if (state.clipStack.size() >= Graphics::kMostStates) raise(ErrorName::kLimitCheck);
  state.clipStack.push_back(state.clip);
}

void clipRestore(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  if (state.clipStack.empty()) {
    // As grestore does, the bottommost one is that from which this state began.
    return;
  }
  state.clip = state.clipStack.back();
  state.clipStack.pop_back();
}

constexpr OperatorRow kClipOperators[] = {
    {"clip", "", clip},
    {"eoclip", "", eoClip},
    {"initclip", "", initClip},
    {"rectclip", "", rectClip},
    {"clippath", "", clipPath},
    {"clipsave", "", clipSave},
    {"cliprestore", "", clipRestore},
};

}  // namespace

void addClipOperators(Interpreter& interpreter) {
  interpreter.addOperators(kClipOperators);
}

}  // namespace quillpress::level3
