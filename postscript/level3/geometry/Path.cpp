#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

void Path::add(SegmentKind kind, Point point) {
  kinds_.push_back(kind);
  points_.push_back(point);
}

void Path::beginSubpathIfClosed() {
  if (!kinds_.empty() && kinds_.back() == SegmentKind::kClose) add(SegmentKind::kMove, start_);
}

void Path::lineTo(Point point) {
  beginSubpathIfClosed();
  add(SegmentKind::kLine, point);
}

void Path::curveTo(Point control1, Point control2, Point end) {
  beginSubpathIfClosed();
  kinds_.push_back(SegmentKind::kCurve);
  points_.insert(points_.end(), {control1, control2, end});
  hasCurves_ = true;
}

void Path::close() {
  if (kinds_.empty() || kinds_.back() == SegmentKind::kClose) return;
  kinds_.push_back(SegmentKind::kClose);
}

void Path::appendRectangle(const Box& box) {
  moveTo({box.left, box.bottom});
  lineTo({box.right, box.bottom});
  lineTo({box.right, box.top});
  lineTo({box.left, box.top});
  close();
}

void Path::append(const Path& other) {
  if (other.isEmpty()) return;
  // A move of ours that nothing follows is replaced by the other path's first.
  if (!kinds_.empty() && kinds_.back() == SegmentKind::kMove) {
    kinds_.pop_back();
    points_.pop_back();
  }
  kinds_.insert(kinds_.end(), other.kinds_.begin(), other.kinds_.end());
  points_.insert(points_.end(), other.points_.begin(), other.points_.end());
  start_ = other.start_;
  hasCurves_ = hasCurves_ || other.hasCurves_;
}

void Path::clear() {
  kinds_.clear();
  points_.clear();
  hasCurves_ = false;
}

Path Path::transformed(const Matrix& matrix) const {
  Path result(*this);
  for (Point& point : result.points_) point = matrix.apply(point);
  result.start_ = matrix.apply(start_);
  return result;
}

Path Path::reversed() const {
  Path result;
  std::size_t firstKind = 0;
  std::size_t firstPoint = 0;
  while (firstKind < kinds_.size()) {
    std::size_t endKind = firstKind + 1;
    std::size_t endPoint = firstPoint + 1;
    bool isClosed = false;
    while (endKind < kinds_.size() && kinds_[endKind] != SegmentKind::kMove) {
      isClosed = isClosed || kinds_[endKind] == SegmentKind::kClose;
      endPoint += pointCount(kinds_[endKind]);
      ++endKind;
    }
    std::size_t point = endPoint - 1;
    result.moveTo(points_[point]);
    for (std::size_t kind = endKind; kind-- > firstKind + 1;) {
      if (kinds_[kind] == SegmentKind::kLine) {
        result.lineTo(points_[point - 1]);
        point -= 1;
      } else if (kinds_[kind] == SegmentKind::kCurve) {
        result.curveTo(points_[point - 1], points_[point - 2], points_[point - 3]);
        point -= 3;
      }
    }
    if (isClosed) result.close();
    firstKind = endKind;
    firstPoint = endPoint;
  }
  return result;
}

Box Path::boundingBox() const {
  Box box;
  std::size_t count = points_.size();
  if (count > 1 && kinds_.back() == SegmentKind::kMove) --count;
  for (std::size_t index = 0; index < count; ++index) box.include(points_[index]);
  return box;
}

std::optional<Box> asRectangle(const Path& path, bool mayBeOpen) {
  std::vector<SegmentKind> kinds = path.kinds();
  const std::vector<Point>& points = path.points();
  // Nobody sees a move at the end.
  std::size_t pointsUsed = points.size();
  if (!kinds.empty() && kinds.back() == SegmentKind::kMove) {
    kinds.pop_back();
    --pointsUsed;
  }
  const bool isClosed = !kinds.empty() && kinds.back() == SegmentKind::kClose;
  if (isClosed) kinds.pop_back();
  if (!isClosed && !mayBeOpen) return std::nullopt;
  if (kinds.size() != 4 && kinds.size() != 5) return std::nullopt;
  if (kinds.size() != pointsUsed || kinds[0] != SegmentKind::kMove) return std::nullopt;
  for (std::size_t index = 1; index < kinds.size(); ++index) {
    if (kinds[index] != SegmentKind::kLine) return std::nullopt;
  }
  // A fifth point must be the first again.
  if (kinds.size() == 5 && points[4] != points[0]) return std::nullopt;
  const Point& p0 = points[0];
  const Point& p1 = points[1];
  const Point& p2 = points[2];
  const Point& p3 = points[3];
  const bool beginsLevel = p0.y == p1.y && p1.x == p2.x && p2.y == p3.y && p3.x == p0.x;
  const bool beginsUpright = p0.x == p1.x && p1.y == p2.y && p2.x == p3.x && p3.y == p0.y;
  if (!beginsLevel && !beginsUpright) return std::nullopt;
  return Box::ofCorners(p0, p2);
}

}  // namespace quillpress::level3
