#pragma once

#include <cstdint>

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

enum class FillRule : std::uint8_t { kNonzero, kEvenOdd };

// Whether filling `path` would paint any of the pixel (the square of side 1 from whole coordinates) that
// holds the point.
bool paintsPixelAt(const Path& path, FillRule rule, Point point);

// Whether filling `path` would paint any of the area that filling `aperture` with the nonzero rule covers.
bool paintsInside(const Path& path, FillRule rule, const Path& aperture);

}  // namespace quillpress::level3
