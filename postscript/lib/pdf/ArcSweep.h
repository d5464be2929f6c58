#pragma once

#include <vector>

#include "postscript/lib/objects/Matrix.h"

namespace quillpress {

struct Circle {
  Point centre;
  double radius = 0;
};

// One cubic curve of at most a quadrant.
struct ArcPiece {
  Point start;
  Point control1;
  Point control2;
  Point end;
};

// The curves of a sweep from one angle to another, in degrees; clockwise when the second is the smaller
// one. The sweep is cut at the multiples of 90 degrees. REQUIRES: both angles are finite
std::vector<ArcPiece> arcPieces(const Circle& circle, double startAngle, double endAngle);

// The curves of a turn of less than half a circle, from an angle in radians, clockwise when the turn is
// negative: one up to a quadrant, else two equal ones. Rounded corners stand at any angle, and cutting them
// at the multiples of 90 degrees would leave slivers.
std::vector<ArcPiece> cornerPieces(const Circle& circle, double startAngle, double turn);

}  // namespace quillpress
