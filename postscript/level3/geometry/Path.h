#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "postscript/level3/geometry/Box.h"

namespace quillpress::level3 {

enum class SegmentKind : std::uint8_t { kMove, kLine, kCurve, kClose };

// The number of points that a segment of a kind adds: 1, 1, 3, 0.
constexpr std::size_t pointCount(SegmentKind kind) {
  if (kind == SegmentKind::kClose) return 0;
  return kind == SegmentKind::kCurve ? 3 : 1;
}

// Lines and Bezier curves in one space, usually the device's, in subpaths.
//
// Every subpath begins with a move. A close keeps the subpath's start as current point; what is drawn from
// there begins a new subpath with a move of its own. A move that follows a move takes its place.
class Path {
 public:
  bool isEmpty() const { return kinds_.empty(); }
  std::size_t segmentCount() const { return kinds_.size(); }
  bool hasCurves() const { return hasCurves_; }

  std::optional<Point> currentPoint() const {
    if (kinds_.empty()) return std::nullopt;
    return kinds_.back() == SegmentKind::kClose ? start_ : points_.back();
  }

  void moveTo(Point point) {
    start_ = point;
    if (!kinds_.empty() && kinds_.back() == SegmentKind::kMove) {
      points_.back() = point;
    } else {
      add(SegmentKind::kMove, point);
    }
  }

  // These need a current point.
  void lineTo(Point point);
  void curveTo(Point control1, Point control2, Point end);

  // Nothing happens when there is no open subpath.
  void close();

  void appendRectangle(const Box& box);
  void append(const Path& other);
  void clear();

  Path transformed(const Matrix& matrix) const;

  // Each subpath drawn backwards, closed ones closed again.
  Path reversed() const;

  // Around all points, control points included. A move that nothing follows counts only when it is all there
  // is.
  Box boundingBox() const;

  // Calls visitor.move(p), .line(p), .curve(p1, p2, p3) and .close() in order.
  template <typename Visitor>
  void visit(Visitor&& visitor) const;

  const std::vector<SegmentKind>& kinds() const { return kinds_; }
  const std::vector<Point>& points() const { return points_; }

  friend bool operator==(const Path& left, const Path& right) {
    return left.kinds_ == right.kinds_ && left.points_ == right.points_;
  }

 private:
  void beginSubpathIfClosed();
  void add(SegmentKind kind, Point point);

  std::vector<SegmentKind> kinds_;
  std::vector<Point> points_;
  Point start_;
  bool hasCurves_ = false;
};

template <typename Visitor>
void Path::visit(Visitor&& visitor) const {
  const Point* point = points_.data();
  for (const SegmentKind kind : kinds_) {
    switch (kind) {
      case SegmentKind::kMove:
        visitor.move(point[0]);
        break;
      case SegmentKind::kLine:
        visitor.line(point[0]);
        break;
      case SegmentKind::kCurve:
        visitor.curve(point[0], point[1], point[2]);
        break;
      case SegmentKind::kClose:
        visitor.close();
        break;
    }
    point += pointCount(kind);
  }
}

// The box that a path draws when it is one rectangle along the axes: four corners, closed or, where
// `mayBeOpen`, left open as filling allows.
std::optional<Box> asRectangle(const Path& path, bool mayBeOpen);

}  // namespace quillpress::level3
