#pragma once

#include <vector>

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

// One subpath as points without repetitions.
struct Polyline {
  std::vector<Point> points;
  bool isClosed = false;
  // All points fell on one place, and something was drawn or closed there.
  bool isDot = false;
};

// The subpaths of a path without curves. Moves that nothing follows leave nothing.
std::vector<Polyline> polylinesOf(const Path& path);

}  // namespace quillpress::level3
