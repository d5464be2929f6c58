#pragma once

#include <cstdint>

#include "postscript/level3/geometry/Dashing.h"
#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

enum class LineCap : std::uint8_t { kButt = 0, kRound = 1, kSquare = 2 };
enum class LineJoin : std::uint8_t { kMiter = 0, kRound = 1, kBevel = 2 };

// How lines are drawn; lengths in user space.
struct LineStyle {
  double width = 1;
  double miterLimit = 10;
  LineCap cap = LineCap::kButt;
  LineJoin join = LineJoin::kMiter;
  DashPattern dash;

  friend bool operator==(const LineStyle&, const LineStyle&) = default;
};

// The outline, in device space, of what stroking a path in device space paints; to be filled with the nonzero
// rule. `matrix` maps user space, in which the pen is round, to device space. A singular matrix gives
// nothing.
Path strokeOutline(const Path& path, const LineStyle& style, const Matrix& matrix, double flatness);

}  // namespace quillpress::level3
