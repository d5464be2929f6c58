#pragma once

#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/geometry/Box.h"

namespace quillpress::level3 {

// What the procedure of a Type 3 glyph has told of it, while it runs. setcachedevice and its like report
// here.
struct GlyphRun {
  // Device space to the glyph's character space.
  Matrix fromDevice;
  Point advance;
  VerticalMetrics vertical;
  Box bounds;
  bool hasWidth = false;
  bool hasVertical = false;
  // setcachedevice: a shape without colours of its own.
  bool isMask = false;
};

}  // namespace quillpress::level3
