#include "postscript/level3/graphics/GraphicsOperators.h"

namespace quillpress::level3 {

void addGraphicsOperators(Interpreter& interpreter) {
  addMatrixOperators(interpreter);
  addStateOperators(interpreter);
  addPathOperators(interpreter);
  addPathQueryOperators(interpreter);
  addClipOperators(interpreter);
  addPaintOperators(interpreter);
  addUserPathOperators(interpreter);
  addInsidenessOperators(interpreter);
  addColourOperators(interpreter);
  addRenderingOperators(interpreter);
  addFormOperators(interpreter);
  addPatternOperators(interpreter);
  addImageOperators(interpreter);
}

}  // namespace quillpress::level3
