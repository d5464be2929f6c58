#include "postscript/level3/fonts/GlyphRecorder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "postscript/level3/fonts/FontError.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostGroups = 4096;
constexpr double kLargestCoordinate = 1e7;

bool isTooFar(Point point) {
  return !(std::abs(point.x) < kLargestCoordinate && std::abs(point.y) < kLargestCoordinate);
}

}  // namespace

Stem normalised(const Stem& stem) {
  const bool isEdge = stem.width == -20 || stem.width == -21;
  if (stem.width >= 0 || isEdge) return stem;
  return {stem.position + stem.width, -stem.width, stem.isVertical};
}

void GlyphRecorder::beginPart(Point origin) {
  close();
  origin_ = origin;
  current_ = origin;
  dropStems();
}

void GlyphRecorder::move(Point distance) {
  close();
  step(distance);
}

void GlyphRecorder::prepare() {
  flushStems();
  if (isOpen_) return;
  add(GlyphProgram::Kind::kMove);
  addPoint(current_);
  isOpen_ = true;
}

void GlyphRecorder::line(Point distance) {
  prepare();
  step(distance);
  add(GlyphProgram::Kind::kLine);
  addPoint(current_);
}

void GlyphRecorder::curve(Point first, Point second, Point third) {
  prepare();
  add(GlyphProgram::Kind::kCurve);
  for (const Point distance : {first, second, third}) {
    step(distance);
    addPoint(current_);
  }
}

void GlyphRecorder::flex(const std::array<Point, 6>& points, double depth) {
  prepare();
  add(GlyphProgram::Kind::kFlex);
  for (const Point point : points) addPoint(point);
  if (isTooFar({depth, 0})) throw FontError("a charstring's flex is too deep");
  program_.flexDepths.push_back(depth);
  current_ = points.back();
}

void GlyphRecorder::close() {
  if (!isOpen_) return;
  add(GlyphProgram::Kind::kClose);
  isOpen_ = false;
}

void GlyphRecorder::addStem(double position, double width, bool isVertical) {
  if (stems_.size() >= kMostStems) throw FontError("a charstring has too many stems");
  if (isTooFar({position, width})) throw FontError("a charstring's stem is too large");
  const double start = isVertical ? origin_.x : origin_.y;
  stems_.push_back(normalised({start + position, width, isVertical}));
  stemsChanged_ = true;
}

void GlyphRecorder::dropStems() {
  stemsChanged_ = stemsChanged_ || !stems_.empty();
  stems_.clear();
}

void GlyphRecorder::setStems(std::vector<Stem> stems) {
  stems_ = std::move(stems);
  stemsChanged_ = true;
}

void GlyphRecorder::addCounters(std::vector<Stem> stems) {
  std::vector<std::vector<Stem>>& groups = program_.counterGroups;
  if (groups.size() < kMostStems && std::ranges::find(groups, stems) == groups.end()) {
    groups.push_back(std::move(stems));
  }
}

void GlyphRecorder::flushStems() {
  if (!stemsChanged_) return;
  stemsChanged_ = false;
  std::vector<Stem> group = stems_;
  std::ranges::sort(group);
  group.erase(std::unique(group.begin(), group.end()), group.end());
  if (!program_.hintGroups.empty() && program_.hintGroups.back() == group) return;
  if (program_.hintGroups.empty() && group.empty()) return;
  if (program_.hintGroups.size() >= kMostGroups) throw FontError("a charstring changes its stems too often");
  program_.hintGroups.push_back(std::move(group));
  add(GlyphProgram::Kind::kHints);
}

GlyphProgram GlyphRecorder::finish() {
  close();
  if (isTooFar(program_.advance) || std::ranges::any_of(program_.points, isTooFar)) {
    throw FontError("a glyph is too large");
  }
  return std::move(program_);
}

}  // namespace quillpress::level3
