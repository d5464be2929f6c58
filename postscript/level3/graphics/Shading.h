#pragma once

#include <optional>

#include "postscript/level3/geometry/Box.h"
#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/pdf/PdfFile.h"

namespace quillpress::level3 {

// A shading dictionary's object in the file.
struct ShadingObject {
  ObjectNumber number = 0;
  // Its BBox, in the shading's space.
  std::optional<Box> bounds;
};

// Writes a shading of any of the seven types. Throws what shfill throws.
ShadingObject writeShading(Interpreter& interpreter, const Object& dictionary, PdfFile& file);

}  // namespace quillpress::level3
