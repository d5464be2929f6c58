#pragma once

#include <vector>

#include "postscript/level3/geometry/Polylines.h"

namespace quillpress::level3 {

// Lengths of dashes and gaps in turn, and how far into them a line begins. Without lengths lines are solid.
struct DashPattern {
  std::vector<double> lengths;
  double offset = 0;

  // Lengths that are all zero draw solid lines, too.
  bool isSolid() const;

  friend bool operator==(const DashPattern&, const DashPattern&) = default;
};

// The dashes of a line, each an open line of its own. A closed line that begins and ends inside dashes has
// them joined, as its corner there is a joint and no end.
std::vector<Polyline> dashesOf(const Polyline& line, const DashPattern& pattern);

}  // namespace quillpress::level3
