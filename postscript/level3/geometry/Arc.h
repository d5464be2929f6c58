#pragma once

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

enum class Turn { kAnticlockwise, kClockwise };

// Appends a circle's arc, given in the space that `matrix` maps to the path's: a line from the current point,
// if there is one, to its beginning, else a move; then a curve for each quarter begun. Angles are in degrees.
// The end is raised (or lowered, for clockwise) by full turns until it does not lie before the beginning.
void appendArc(Path& path, const Matrix& matrix, Point centre, double radius, double fromDegrees,
               double toDegrees, Turn turn);

// Where an arc of a radius touches the two sides of a corner, in the space of its arguments.
struct TangentArc {
  Point first;
  Point second;
  Point centre;
  // False when the sides lie on one line; both points are the corner then.
  bool isRound = false;
};

TangentArc tangentArc(Point from, Point corner, Point to, double radius);

// Appends a line to the first tangent point and the arc to the second.
void appendTangentArc(Path& path, const Matrix& matrix, const TangentArc& arc);

}  // namespace quillpress::level3
