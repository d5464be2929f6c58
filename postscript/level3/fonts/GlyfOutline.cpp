#include "postscript/level3/fonts/GlyfOutline.h"

#include <algorithm>
#include <span>

#include "postscript/level3/fonts/ByteReader.h"

namespace quillpress::level3 {

namespace {

constexpr int kDeepestComponent = 10;
// In one glyph, at all depths together; and how many points they may have.
constexpr std::size_t kMostComponents = 1000;
constexpr std::size_t kMostPoints = 200'000;

constexpr std::size_t kHeaderSize = 10;

// Flags of points.
constexpr unsigned kOnCurve = 0x01;
constexpr unsigned kShortX = 0x02;
constexpr unsigned kShortY = 0x04;
constexpr unsigned kRepeat = 0x08;
constexpr unsigned kSameOrPositiveX = 0x10;
constexpr unsigned kSameOrPositiveY = 0x20;

// Flags of components.
constexpr unsigned kArgumentsAreWords = 0x0001;
constexpr unsigned kArgumentsAreDistance = 0x0002;
constexpr unsigned kHasScale = 0x0008;
constexpr unsigned kMoreComponents = 0x0020;
constexpr unsigned kHasTwoScales = 0x0040;
constexpr unsigned kHasMatrix = 0x0080;
constexpr unsigned kScaledOffset = 0x0800;

double readF2Dot14(ByteReader& reader) {
  return reader.i16() / 16384.0;
}

GlyfComponent readComponent(ByteReader& reader, unsigned flags) {
  GlyfComponent component;
  component.numberPlace = reader.position();
  component.glyph = reader.u16();
  component.argumentsAreDistance = (flags & kArgumentsAreDistance) != 0;
  component.isDistanceScaled = (flags & kScaledOffset) != 0;
  const auto argument = [&]() -> int {
    // Distances have a sign, numbers of points have none.
    if ((flags & kArgumentsAreWords) != 0)
      return component.argumentsAreDistance ? reader.i16() : reader.u16();
    const int byte = reader.u8();
    return component.argumentsAreDistance && byte > 127 ? byte - 256 : byte;
  };
  component.argument1 = argument();
  component.argument2 = argument();
  Matrix& matrix = component.matrix;
  if ((flags & kHasScale) != 0) {
    matrix.a = matrix.d = readF2Dot14(reader);
  } else if ((flags & kHasTwoScales) != 0) {
    matrix.a = readF2Dot14(reader);
    matrix.d = readF2Dot14(reader);
  } else if ((flags & kHasMatrix) != 0) {
    matrix.a = readF2Dot14(reader);
    matrix.b = readF2Dot14(reader);
    matrix.c = readF2Dot14(reader);
    matrix.d = readF2Dot14(reader);
  }
  return component;
}

std::vector<std::uint8_t> readFlags(ByteReader& reader, std::size_t count) {
  std::vector<std::uint8_t> flags;
  while (flags.size() < count) {
    const std::uint8_t flag = reader.u8();
    const std::size_t times = (flag & kRepeat) != 0 ? 1U + reader.u8() : 1U;
    flags.insert(flags.end(), std::min(times, count - flags.size()), flag);
  }
  return flags;
}

int readStep(ByteReader& reader, unsigned flag, unsigned isShort, unsigned isSameOrPositive) {
  if ((flag & isShort) != 0) {
    const int step = reader.u8();
    return (flag & isSameOrPositive) != 0 ? step : -step;
  }
  return (flag & isSameOrPositive) != 0 ? 0 : reader.i16();
}

void appendQuadratic(Path& path, Point control, Point end) {
  const Point begin = *path.currentPoint();
  path.curveTo(between(begin, control, 2.0 / 3), between(end, control, 2.0 / 3), end);
}

}  // namespace

std::vector<GlyfComponent> componentsOf(std::string_view data) {
  std::vector<GlyfComponent> components;
  if (data.size() < kHeaderSize || ByteReader(data).i16() >= 0) return components;
  ByteReader reader(data, kHeaderSize);
  unsigned flags = kMoreComponents;
  while ((flags & kMoreComponents) != 0) {
    if (components.size() >= kMostComponents) throw FontError("a composite glyph has too many components");
    flags = reader.u16();
    components.push_back(readComponent(reader, flags));
  }
  return components;
}

GlyfOutline::GlyfOutline(const Source& source, GlyphIndex glyph)
    : source_(source), componentsLeft_(kMostComponents) {
  const auto data = source(glyph);
  if (!data) throw FontError("the font has no such glyph");
  if (data->size() >= kHeaderSize) {
    ByteReader header(*data, 2);
    left_ = header.i16();
    header.skip(4);
    top_ = header.i16();
  }
  add(glyph, 0);
}

void GlyfOutline::add(GlyphIndex glyph, int depth) {
  if (depth > kDeepestComponent) throw FontError("a composite glyph's components are nested too deeply");
  const auto data = source_(glyph);
  if (!data) throw FontError("a composite glyph lacks a component");
  if (data->size() < kHeaderSize) return;
  if (ByteReader(*data).i16() >= 0) {
    addSimple(*data);
  } else {
    addComposite(*data, depth);
  }
}

void GlyfOutline::addSimple(std::string_view data) {
  ByteReader reader(data);
  const auto contours = static_cast<std::size_t>(reader.i16());
  reader.skip(kHeaderSize - 2);
  if (contours == 0) return;
  std::vector<std::size_t> ends;
  for (std::size_t i = 0; i < contours; ++i) {
    const std::size_t end = reader.u16();
    if (!ends.empty() && end <= ends.back()) throw FontError("a glyph's contours are out of order");
    ends.push_back(end);
  }
  reader.skip(reader.u16());  // instructions
  const std::size_t count = ends.back() + 1;
  if (points_.size() + count > kMostPoints) throw FontError("a glyph has too many points");
  const std::vector<std::uint8_t> flags = readFlags(reader, count);
  const std::size_t first = points_.size();
  points_.resize(first + count);
  const std::span<OutlinePoint> added = std::span(points_).subspan(first);
  double x = 0;
  for (std::size_t i = 0; i < count; ++i) {
    x += readStep(reader, flags[i], kShortX, kSameOrPositiveX);
    added[i].point.x = x;
    added[i].isOnCurve = (flags[i] & kOnCurve) != 0;
  }
  double y = 0;
  for (std::size_t i = 0; i < count; ++i) {
    y += readStep(reader, flags[i], kShortY, kSameOrPositiveY);
    added[i].point.y = y;
  }
  for (const std::size_t end : ends) added[end].endsContour = true;
}

void GlyfOutline::addComposite(std::string_view data, int depth) {
  const std::size_t firstOfAll = points_.size();
  for (const GlyfComponent& component : componentsOf(data)) {
    if (componentsLeft_-- == 0) throw FontError("a composite glyph has too many components");
    const std::size_t first = points_.size();
    add(component.glyph, depth + 1);
    const auto own = std::span(points_).subspan(first);
    for (OutlinePoint& each : own) each.point = component.matrix.apply(each.point);
    Point distance;
    if (component.argumentsAreDistance) {
      distance = {static_cast<double>(component.argument1), static_cast<double>(component.argument2)};
      if (component.isDistanceScaled) {
        const Matrix& matrix = component.matrix;
        distance = {distance.x * length({matrix.a, matrix.b}), distance.y * length({matrix.c, matrix.d})};
      }
    } else {
      // A point of the component is laid on one of what is there already.
      const std::size_t anchor = firstOfAll + static_cast<std::size_t>(component.argument1);
      const auto point = static_cast<std::size_t>(component.argument2);
      if (anchor >= first || point >= own.size())
        throw FontError("a composite glyph is anchored at a missing point");
      distance = points_[anchor].point - own[point].point;
    }
    for (OutlinePoint& each : own) each.point = each.point + distance;
  }
}

// Contours are closed. Between two points off the curve lies one on it, half-way.
Path GlyfOutline::path() const {
  Path path;
  std::span<const OutlinePoint> rest(points_);
  while (!rest.empty()) {
    std::size_t count = 1;
    while (count < rest.size() && !rest[count - 1].endsContour) ++count;
    const std::span<const OutlinePoint> contour = rest.first(count);
    rest = rest.subspan(count);

    // A contour may begin off the curve; its last point, or the middle between the two, is its start then.
    const OutlinePoint& last = contour[count - 1];
    const bool startsOnFirst = contour[0].isOnCurve;
    const bool startsOnLast = !startsOnFirst && last.isOnCurve;
    Point start = startsOnFirst ? contour[0].point : last.point;
    if (!startsOnFirst && !startsOnLast) start = between(last.point, contour[0].point, 0.5);
    path.moveTo(start);
    std::optional<Point> control;
    for (std::size_t i = startsOnFirst ? 1 : 0; i < (startsOnLast ? count - 1 : count); ++i) {
      const OutlinePoint& next = contour[i];
      if (next.isOnCurve) {
        if (control) {
          appendQuadratic(path, *control, next.point);
        } else {
          path.lineTo(next.point);
        }
        control.reset();
        continue;
      }
      if (control) appendQuadratic(path, *control, between(*control, next.point, 0.5));
      control = next.point;
    }
    if (control) appendQuadratic(path, *control, start);
    path.close();
  }
  return path;
}

}  // namespace quillpress::level3
