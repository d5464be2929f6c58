#include "postscript/level3/graphics/GraphicsState.h"

namespace quillpress::level3 {

void RenderingParameters::trace(Tracer& tracer) const {
  tracer.visit(halftone);
  tracer.visit(transfer);
  tracer.visit(blackGeneration);
  tracer.visit(undercolorRemoval);
  tracer.visit(colorRendering);
  for (const auto& screen : screens) tracer.visit(screen);
}

void GraphicsState::trace(Tracer& tracer) const {
  if (colour) colour->trace(tracer);
  tracer.visit(font);
  tracer.visit(rootFont);
  tracer.visit(pageDevice);
  if (rendering) rendering->trace(tracer);
}

}  // namespace quillpress::level3
