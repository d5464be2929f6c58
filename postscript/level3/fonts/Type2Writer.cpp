#include <algorithm>
#include <cmath>
#include <span>

#include "postscript/level3/fonts/ByteWriter.h"
#include "postscript/level3/fonts/Charstrings.h"

// Glyphs as Type 2 charstrings: one operator for as many neighbours as one can take, and no subroutines, as
// a font file is compressed anyway.

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostOperandsWritten = 48;
// In one operator, and the width in front of them.
constexpr std::size_t kMostStemsWritten = 23;

enum Type2Operator : std::uint8_t {
  kHstem = 1,
  kVstem = 3,
  kVmoveto = 4,
  kRlineto = 5,
  kHlineto = 6,
  kVlineto = 7,
  kRrcurveto = 8,
  kEscape = 12,
  kEndchar = 14,
  kHstemhm = 18,
  kHintmask = 19,
  kCntrmask = 20,
  kRmoveto = 21,
  kHmoveto = 22,
  kVstemhm = 23,
  kVvcurveto = 26,
  kHhcurveto = 27,
  kVhcurveto = 30,
  kHvcurveto = 31,
  kHflex = 34,
  kFlex = 35,
};

// Coordinates in the steps of 1/65536 that charstrings count in, so that rounding does not add up.
using Fixed = std::int64_t;
constexpr Fixed kOne = 65536;

Fixed fixed(double value) {
  if (!(std::abs(value) < 1e9)) throw FontError("a glyph is too large");
  return std::llround(value * static_cast<double>(kOne));
}

struct FixedPoint {
  Fixed x = 0;
  Fixed y = 0;
};

void appendCharstringNumber(std::string& bytes, Fixed value) {
  // Beyond, neither form of a number can hold it.
  if (value < -32768 * kOne || value >= 32768 * kOne) throw FontError("a glyph is too large");
  if (value % kOne != 0) {
    append8(bytes, 255);
    append32(bytes, static_cast<std::uint32_t>(value));
    return;
  }
  const auto integer = static_cast<std::int32_t>(value / kOne);
  const auto distance = static_cast<std::uint32_t>(std::abs(integer));
  if (distance <= 107) {
    append8(bytes, static_cast<std::uint32_t>(integer + 139));
  } else if (distance <= 1131) {
    append16(bytes, (integer > 0 ? 247U << 8 : 251U << 8) + distance - 108);
  } else {
    append8(bytes, 28);
    append16(bytes, static_cast<std::uint32_t>(integer));
  }
}

class Type2Writer {
 public:
  Type2Writer(const GlyphProgram& program, Fixed width, bool hasWidth) : program_(program), width_(width) {
    isWidthDue_ = hasWidth;
  }

  std::string write() {
    collectStems();
    writeStems();
    const Point* point = program_.points.data();
    for (const GlyphProgram::Kind kind : program_.kinds) {
      writeSegment(kind, point);
      point += pointCount(kind);
    }
    flush();
    emit({}, kEndchar);
    return bytes_;
  }

 private:
  void collectStems();
  void writeStems();
  void writeStems(bool isVertical);
  void writeMask(Type2Operator code, const std::vector<Stem>& stems);
  void writeSegment(GlyphProgram::Kind kind, const Point* point);

  void move(FixedPoint distance);
  void line(FixedPoint distance);
  void curve(FixedPoint first, FixedPoint second, FixedPoint third);
  void flex(const Point* points, double depth);

  bool canExtend(std::span<const Fixed> operands, Type2Operator code) const;
  void hold(std::span<const Fixed> operands, Type2Operator code);
  void flush();
  void emit(std::span<const Fixed> operands, std::uint8_t code);

  // From the current point, which it moves.
  FixedPoint distanceTo(Point point) {
    const FixedPoint target{fixed(point.x), fixed(point.y)};
    const FixedPoint distance{target.x - current_.x, target.y - current_.y};
    current_ = target;
    return distance;
  }

  const GlyphProgram& program_;
  Fixed width_;
  bool isWidthDue_ = false;
  std::string bytes_;
  // All stems of the glyph, horizontal ones first; empty when there are none or too many.
  std::vector<Stem> stems_;
  bool hasMasks_ = false;
  FixedPoint current_;
  std::size_t nextHints_ = 0;
  std::size_t nextFlex_ = 0;
  // The operator that may still take more operands.
  std::vector<Fixed> held_;
  Type2Operator heldCode_ = kEndchar;
  // How an operator of alternating directions goes on.
  bool isNextVertical_ = false;
};

void Type2Writer::collectStems() {
  for (const std::vector<Stem>& group : program_.hintGroups)
    stems_.insert(stems_.end(), group.begin(), group.end());
  std::ranges::sort(stems_, [](const Stem& left, const Stem& right) {
    if (left.isVertical != right.isVertical) return right.isVertical;
    return left < right;
  });
  stems_.erase(std::unique(stems_.begin(), stems_.end()), stems_.end());
  const auto vertical = static_cast<std::size_t>(std::ranges::count(stems_, true, &Stem::isVertical));
  if (vertical > kMostStemsWritten || stems_.size() - vertical > kMostStemsWritten) stems_.clear();
  hasMasks_ = !stems_.empty() && (program_.hintGroups.size() > 1 || !program_.counterGroups.empty());
}

void Type2Writer::writeStems() {
  if (stems_.empty()) return;
  writeStems(false);
  writeStems(true);
  for (const std::vector<Stem>& group : program_.counterGroups) {
    const bool areDeclared =
        std::ranges::all_of(group, [&](const Stem& stem) { return std::ranges::count(stems_, stem) > 0; });
    if (areDeclared) writeMask(kCntrmask, group);
  }
}

void Type2Writer::writeStems(bool isVertical) {
  std::vector<Fixed> operands;
  Fixed edge = 0;
  for (const Stem& stem : stems_) {
    if (stem.isVertical != isVertical) continue;
    const Fixed position = fixed(stem.position);
    operands.push_back(position - edge);
    operands.push_back(fixed(stem.width));
    edge = position + operands.back();
  }
  if (operands.empty()) return;
  if (isVertical) {
    emit(operands, hasMasks_ ? kVstemhm : kVstem);
  } else {
    emit(operands, hasMasks_ ? kHstemhm : kHstem);
  }
}

void Type2Writer::writeMask(Type2Operator code, const std::vector<Stem>& stems) {
  emit({}, code);
  std::string mask((stems_.size() + 7) / 8, '\0');
  for (std::size_t i = 0; i < stems_.size(); ++i) {
    if (std::ranges::count(stems, stems_[i]) == 0) continue;
    mask[i / 8] = static_cast<char>(static_cast<std::uint8_t>(mask[i / 8]) | 0x80U >> i % 8);
  }
  bytes_ += mask;
}

void Type2Writer::writeSegment(GlyphProgram::Kind kind, const Point* point) {
  switch (kind) {
    case GlyphProgram::Kind::kMove:
      move(distanceTo(point[0]));
      break;
    case GlyphProgram::Kind::kLine:
      line(distanceTo(point[0]));
      break;
    case GlyphProgram::Kind::kCurve: {
      const FixedPoint first = distanceTo(point[0]);
      const FixedPoint second = distanceTo(point[1]);
      curve(first, second, distanceTo(point[2]));
      break;
    }
    case GlyphProgram::Kind::kFlex:
      flex(point, program_.flexDepths[nextFlex_++]);
      break;
    case GlyphProgram::Kind::kHints:
      flush();
      if (hasMasks_) writeMask(kHintmask, program_.hintGroups[nextHints_]);
      ++nextHints_;
      break;
    case GlyphProgram::Kind::kClose:
      // Charstrings of type 2 close their subpaths themselves.
      break;
  }
}

void Type2Writer::move(FixedPoint distance) {
  flush();
  if (distance.y == 0) {
    emit({&distance.x, 1}, kHmoveto);
  } else if (distance.x == 0) {
    emit({&distance.y, 1}, kVmoveto);
  } else {
    const Fixed operands[] = {distance.x, distance.y};
    emit(operands, kRmoveto);
  }
}

void Type2Writer::line(FixedPoint distance) {
  const Fixed operands[] = {distance.x, distance.y};
  if (distance.y == 0) {
    hold(std::span(operands).first(1), kHlineto);
  } else if (distance.x == 0) {
    hold(std::span(operands).last(1), kVlineto);
  } else {
    hold(operands, kRlineto);
  }
}

void Type2Writer::curve(FixedPoint first, FixedPoint second, FixedPoint third) {
  if (first.y == 0 && third.x == 0) {
    const Fixed operands[] = {first.x, second.x, second.y, third.y};
    hold(operands, kHvcurveto);
  } else if (first.x == 0 && third.y == 0) {
    const Fixed operands[] = {first.y, second.x, second.y, third.x};
    hold(operands, kVhcurveto);
  } else if (first.y == 0 && third.y == 0) {
    const Fixed operands[] = {first.x, second.x, second.y, third.x};
    hold(operands, kHhcurveto);
  } else if (first.x == 0 && third.x == 0) {
    const Fixed operands[] = {first.y, second.x, second.y, third.y};
    hold(operands, kVvcurveto);
  } else {
    const Fixed operands[] = {first.x, first.y, second.x, second.y, third.x, third.y};
    hold(operands, kRrcurveto);
  }
}

void Type2Writer::flex(const Point* points, double depth) {
  flush();
  FixedPoint distances[6];
  for (std::size_t i = 0; i < 6; ++i) distances[i] = distanceTo(points[i]);
  const bool isFlat = distances[0].y == 0 && distances[2].y == 0 && distances[3].y == 0 &&
                      distances[5].y == 0 && distances[1].y == -distances[4].y;
  if (isFlat && depth == 50) {
    const Fixed operands[] = {distances[0].x, distances[1].x, distances[1].y, distances[2].x,
                              distances[3].x, distances[4].x, distances[5].x};
    emit(operands, kEscape);
    append8(bytes_, kHflex);
    return;
  }
  std::vector<Fixed> operands;
  for (const FixedPoint& distance : distances) {
    operands.push_back(distance.x);
    operands.push_back(distance.y);
  }
  operands.push_back(fixed(depth));
  emit(operands, kEscape);
  append8(bytes_, kFlex);
}

// Whether the operator that is held could take these operands of another one, too.
bool Type2Writer::canExtend(std::span<const Fixed> operands, Type2Operator code) const {
  if (held_.empty() || held_.size() + operands.size() > kMostOperandsWritten) return false;
  switch (code) {
    case kHlineto:
    case kVlineto:
      return (heldCode_ == kHlineto || heldCode_ == kVlineto) && isNextVertical_ == (code == kVlineto);
    case kHvcurveto:
    case kVhcurveto:
      return (heldCode_ == kHvcurveto || heldCode_ == kVhcurveto) && isNextVertical_ == (code == kVhcurveto);
    default:
      return heldCode_ == code;
  }
}

void Type2Writer::hold(std::span<const Fixed> operands, Type2Operator code) {
  if (!canExtend(operands, code)) {
    flush();
    heldCode_ = code;
  }
  held_.insert(held_.end(), operands.begin(), operands.end());
  isNextVertical_ = code == kHlineto || code == kHvcurveto;
}

void Type2Writer::flush() {
  if (held_.empty()) return;
  emit(held_, heldCode_);
  held_.clear();
}

void Type2Writer::emit(std::span<const Fixed> operands, std::uint8_t code) {
  if (isWidthDue_) appendCharstringNumber(bytes_, width_);
  isWidthDue_ = false;
  for (const Fixed operand : operands) appendCharstringNumber(bytes_, operand);
  append8(bytes_, code);
}

}  // namespace

std::string type2Charstring(const GlyphProgram& program, double defaultWidthX, double nominalWidthX) {
  const bool hasWidth = program.advance.x != defaultWidthX;
  return Type2Writer(program, fixed(program.advance.x) - fixed(nominalWidthX), hasWidth).write();
}

}  // namespace quillpress::level3
