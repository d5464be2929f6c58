#include "postscript/level3/geometry/Flattening.h"

#include <algorithm>
#include <cmath>

namespace quillpress::level3 {

namespace {

constexpr double kMostPieces = 1000;

// Second differences bound how far a chord is from its piece: 3/4 of the larger one, over the square of the
// count.
double piecesFor(Point begin, Point control1, Point control2, Point end, double flatness) {
  const Point bend1 = begin - control1 * 2 + control2;
  const Point bend2 = control1 - control2 * 2 + end;
  const double bend = std::max(length(bend1), length(bend2));
  const double pieces = std::ceil(std::sqrt(0.75 * bend / flatness));
  return std::clamp(std::isfinite(pieces) ? pieces : kMostPieces, 1.0, kMostPieces);
}

class Flattener {
 public:
  Flattener(Path& result, double flatness) : result_(result), flatness_(flatness) {}

  void move(Point point) {
    result_.moveTo(point);
    current_ = point;
  }
  void line(Point point) {
    result_.lineTo(point);
    current_ = point;
  }
  void curve(Point control1, Point control2, Point end) {
    appendFlattened(result_, current_, control1, control2, end, flatness_);
    current_ = end;
  }
  void close() { result_.close(); }

 private:
  Path& result_;
  double flatness_;
  Point current_;
};

}  // namespace

void appendFlattened(Path& path, Point begin, Point control1, Point control2, Point end, double flatness) {
  const double pieces = piecesFor(begin, control1, control2, end, flatness);
  for (double piece = 1; piece < pieces; ++piece) {
    const double t = piece / pieces;
    const double s = 1 - t;
    path.lineTo(begin * (s * s * s) + control1 * (3 * s * s * t) + control2 * (3 * s * t * t) +
                end * (t * t * t));
  }
  path.lineTo(end);
}

Path flattened(const Path& path, double flatness) {
  Path result;
  if (!path.hasCurves()) {
    result = path;
    return result;
  }
  path.visit(Flattener(result, flatness));
  return result;
}

}  // namespace quillpress::level3
