#include "postscript/level3/geometry/Stroking.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

#include "postscript/level3/geometry/Flattening.h"

namespace quillpress::level3 {

namespace {

// Draws the two sides of one line in user space, and puts them into the result in device space.
class LineOutline {
 public:
  LineOutline(const LineStyle& style, const Matrix& matrix, Path& result)
      : style_(style), matrix_(matrix), result_(result), half_(style.width / 2) {}

  void draw(const Polyline& line) {
    if (line.isDot) {
      drawDot(line.points[0]);
    } else if (line.isClosed) {
      drawClosed(line.points);
    } else {
      drawOpen(line.points);
    }
  }

 private:
  // A dot has no direction that caps could lie in, so only round ones show.
  void drawDot(Point centre) {
    if (style_.cap != LineCap::kRound) return;
    begin(centre + Point{half_, 0});
    for (int quarter = 1; quarter <= 4; ++quarter) roundTo(centre, {half_, 0}, quarter);
    result_.close();
  }

  void drawOpen(const std::vector<Point>& points) {
    const std::size_t last = points.size() - 1;
    begin(points[0] + offset(points[0], points[1]));
    drawSide(points);
    drawCap(points[last], points[last] - points[last - 1]);
    const std::vector<Point> backwards(points.rbegin(), points.rend());
    drawSide(backwards);
    drawCap(points[0], points[0] - points[1]);
    result_.close();
  }

  // The right-hand side of a line, with joins at all points but the ends.
  void drawSide(const std::vector<Point>& points) {
    for (std::size_t index = 1; index < points.size(); ++index) {
      lineTo(points[index] + offset(points[index - 1], points[index]));
      if (index + 1 < points.size()) drawJoin(points[index - 1], points[index], points[index + 1]);
    }
  }

  void drawClosed(const std::vector<Point>& points) {
    drawLoop(points);
    drawLoop({points.rbegin(), points.rend()});
  }

  void drawLoop(const std::vector<Point>& points) {
    const std::size_t count = points.size();
    begin(points[0] + offset(points[0], points[1 % count]));
    for (std::size_t index = 1; index <= count; ++index) {
      const Point previous = points[index - 1];
      const Point here = points[index % count];
      lineTo(here + offset(previous, here));
      drawJoin(previous, here, points[(index + 1) % count]);
    }
    result_.close();
  }

  void drawJoin(Point from, Point corner, Point to) {
    const Point before = offset(from, corner);
    const Point after = offset(corner, to);
    const double turn = cross(corner - from, to - corner);
    const double straightness = dot(corner - from, to - corner);
    if (turn == 0 && straightness > 0) return;
    if (turn < 0) {
      // The inner side of the bend: through the corner, so that the loops that arise all wind one way.
      lineTo(corner);
    } else if (style_.join == LineJoin::kRound) {
      drawRoundJoin(corner, before, after);
    } else if (style_.join == LineJoin::kMiter) {
      drawMiter(corner, before, after);
    }
    lineTo(corner + after);
  }

  void drawMiter(Point corner, Point before, Point after) {
    // The miter's length over the width is 1 over the sine of half the angle between the lines.
    const double cosine = dot(before, after) / (half_ * half_);
    const double sineOfHalf = std::sqrt(std::max(0.0, (1 + cosine) / 2));
    if (sineOfHalf <= 0 || 1 / sineOfHalf > style_.miterLimit) return;
    const Point middle = before + after;
    lineTo(corner + middle * (1 / (1 + cosine)));
  }

  void drawRoundJoin(Point corner, Point before, Point after) {
    double sweep = std::atan2(cross(before, after), dot(before, after));
    if (sweep <= 0) sweep = std::numbers::pi;
    drawRound(corner, before, sweep);
  }

  void drawCap(Point end, Point direction) {
    const Point ahead = direction * (half_ / length(direction));
    const Point right = turnedLeft(ahead) * -1;
    switch (style_.cap) {
      case LineCap::kButt:
        break;
      case LineCap::kRound:
        drawRound(end, right, std::numbers::pi);
        break;
      case LineCap::kSquare:
        lineTo(end + right + ahead);
        lineTo(end - right + ahead);
        break;
    }
    lineTo(end - right);
  }

  // An arc from centre + start over an angle, in pieces of at most a quarter.
  void drawRound(Point centre, Point start, double sweep) {
    const int pieces = static_cast<int>(std::ceil(sweep / (std::numbers::pi / 2) - 1e-9));
    const double step = sweep / pieces;
    Point from = start;
    for (int piece = 1; piece <= pieces; ++piece) {
      const double angle = step * piece;
      const Point to = start * std::cos(angle) + turnedLeft(start) * std::sin(angle);
      curve(centre, from, to, step);
      from = to;
    }
  }

  void roundTo(Point centre, Point start, int quarter) {
    const Point from = Matrix::rotation((quarter - 1) * 90).apply(start);
    curve(centre, from, turnedLeft(from), std::numbers::pi / 2);
  }

  void curve(Point centre, Point from, Point to, double angle) {
    const double reach = std::tan(angle / 4) * 4 / 3;
    result_.curveTo(matrix_.apply(centre + from + turnedLeft(from) * reach),
                    matrix_.apply(centre + to - turnedLeft(to) * reach), matrix_.apply(centre + to));
  }

  // From a line's middle to its right-hand side.
  Point offset(Point from, Point to) const {
    const Point direction = to - from;
    return turnedLeft(direction) * (-half_ / length(direction));
  }

  void begin(Point point) { result_.moveTo(matrix_.apply(point)); }
  void lineTo(Point point) {
    const Point place = matrix_.apply(point);
    if (result_.currentPoint() != place) result_.lineTo(place);
  }

  const LineStyle& style_;
  const Matrix& matrix_;
  Path& result_;
  double half_;
};

}  // namespace

Path strokeOutline(const Path& path, const LineStyle& style, const Matrix& matrix, double flatness) {
  Path result;
  const std::optional<Matrix> toUser = matrix.inverse();
  if (!toUser) return result;
  // The thinnest line that a device draws is one pixel wide.
  LineStyle visible = style;
  if (visible.width <= 0) visible.width = 1 / std::max(matrix.meanScale(), 1e-9);
  LineOutline outline(visible, matrix, result);
  for (Polyline& line : polylinesOf(flattened(path, flatness).transformed(*toUser))) {
    for (const Polyline& dash : dashesOf(line, style.dash)) outline.draw(dash);
  }
  return result;
}

}  // namespace quillpress::level3
