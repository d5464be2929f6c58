#include "postscript/level3/pdf/PathText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

struct Place {
  std::int64_t x = 0;
  std::int64_t y = 0;
  friend bool operator==(const Place&, const Place&) = default;
};

class PathWriter {
 public:
  PathWriter(std::string& text, const ContentSpace& space, bool isFilled)
      : text_(text), space_(space), isFilled_(isFilled) {}

  std::size_t write(const Path& path) {
    const auto& kinds = path.kinds();
    const Point* point = path.points().data();
    std::size_t index = 0;
    while (index < kinds.size()) {
      std::size_t end = index + 1;
      while (end < kinds.size() && kinds[end] != SegmentKind::kMove) ++end;
      // A move alone paints nothing.
      if (end - index > 1) {
        ++subpaths_;
        if (!writeRectangle(kinds.data() + index, end - index, point))
          writeSubpath(kinds.data() + index, end - index, point);
      }
      for (; index < end; ++index) point += pointCount(kinds[index]);
    }
    return subpaths_;
  }

 private:
  Place placeOf(Point point) const {
    const Point place = space_.fromDevice.apply(point);
    return {toFixed(place.x, space_.decimals), toFixed(place.y, space_.decimals)};
  }

  void number(std::int64_t value) {
    appendFixed(text_, value, space_.decimals);
    text_ += ' ';
  }
  void place(Place place) {
    number(place.x);
    number(place.y);
  }

  // Only a closed one where it is stroked: the join of its first corner shows.
  bool writeRectangle(const SegmentKind* kinds, std::size_t count, const Point* points) {
    const bool isClosed = kinds[count - 1] == SegmentKind::kClose;
    if (count != (isClosed ? 5U : 4U) && !(count == 6 && isClosed) && !(count == 5 && isFilled_))
      return false;
    if (!isClosed && !isFilled_) return false;
    const std::size_t corners = isClosed ? count - 1 : count;
    for (std::size_t index = 1; index < corners; ++index) {
      if (kinds[index] != SegmentKind::kLine) return false;
    }
    const Place p0 = placeOf(points[0]);
    const Place p1 = placeOf(points[1]);
    const Place p2 = placeOf(points[2]);
    const Place p3 = placeOf(points[3]);
    if (corners == 5 && !(placeOf(points[4]) == p0)) return false;
    const bool beginsLevel = p0.y == p1.y && p1.x == p2.x && p2.y == p3.y && p3.x == p0.x;
    const bool beginsUpright = p0.x == p1.x && p1.y == p2.y && p2.x == p3.x && p3.y == p0.y;
    if (!beginsLevel && !beginsUpright) return false;
    // `re` draws level first; where the path is stroked its dashes begin with that side.
    if (!isFilled_ && !beginsLevel) return false;
    // From the second corner on where the first side is upright, so that the rectangle turns the same way.
    if (beginsLevel) {
      rectangle(p0, p2);
    } else {
      rectangle(p1, p3);
    }
    return true;
  }

  void rectangle(Place corner, Place opposite) {
    const Place size{opposite.x - corner.x, opposite.y - corner.y};
    place(corner);
    place(size);
    text_ += "re\n";
  }

  void writeSubpath(const SegmentKind* kinds, std::size_t count, const Point* points) {
    Place current = placeOf(*points++);
    place(current);
    text_ += "m\n";
    for (std::size_t index = 1; index < count; ++index) {
      switch (kinds[index]) {
        case SegmentKind::kMove:
          break;
        case SegmentKind::kLine:
          current = writeLine(current, placeOf(points[0]));
          break;
        case SegmentKind::kCurve:
          current = writeCurve(current, placeOf(points[0]), placeOf(points[1]), placeOf(points[2]));
          break;
        case SegmentKind::kClose:
          // Filling closes by itself.
          if (!isFilled_) text_ += "h\n";
          break;
      }
      points += pointCount(kinds[index]);
    }
  }

  Place writeLine(Place from, Place to) {
    if (isFilled_ && from == to) return to;
    place(to);
    text_ += "l\n";
    return to;
  }

  Place writeCurve(Place from, Place control1, Place control2, Place to) {
    if (isFilled_ && from == control1 && from == control2 && from == to) return to;
    if (from == control1) {
      place(control2);
      place(to);
      text_ += "v\n";
    } else if (control2 == to) {
      place(control1);
      place(to);
      text_ += "y\n";
    } else {
      place(control1);
      place(control2);
      place(to);
      text_ += "c\n";
    }
    return to;
  }

  std::string& text_;
  const ContentSpace& space_;
  bool isFilled_;
  std::size_t subpaths_ = 0;
};

}  // namespace

ContentSpace ContentSpace::forMatrix(const Matrix& fromDevice) {
  constexpr double kPartsOfAPixel = 8;
  const double smallest =
      std::min(std::hypot(fromDevice.a, fromDevice.b), std::hypot(fromDevice.c, fromDevice.d));
  const double places = smallest > 0 ? std::ceil(std::log10(kPartsOfAPixel / smallest) - 1e-9) : 9;
  return {fromDevice, static_cast<int>(std::clamp(places, 0.0, 9.0))};
}

std::size_t appendPath(std::string& text, const Path& path, const ContentSpace& space, bool isFilled) {
  return PathWriter(text, space, isFilled).write(path);
}

}  // namespace quillpress::level3
