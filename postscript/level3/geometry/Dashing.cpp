#include "postscript/level3/geometry/Dashing.h"

#include <cmath>
#include <cstddef>
#include <numeric>

namespace quillpress::level3 {

namespace {

// A line cut into more pieces than this is drawn solid: nobody could tell them apart.
constexpr double kMostDashes = 200'000;

// Walks along a dash pattern, round and round.
class DashCursor {
 public:
  explicit DashCursor(const DashPattern& pattern) : lengths_(pattern.lengths) {
    const double period = std::accumulate(lengths_.begin(), lengths_.end(), 0.0);
    // An odd number of lengths changes dash and gap at each round, so two rounds are the period.
    const double whole = lengths_.size() % 2 == 0 ? period : 2 * period;
    double into = std::fmod(pattern.offset, whole);
    if (into < 0) into += whole;
    left_ = lengths_[0];
    while (into >= left_ && into > 0) {
      into -= left_;
      next();
    }
    left_ -= into;
  }

  bool isDash() const { return isDash_; }
  double left() const { return left_; }
  void advance(double distance) { left_ -= distance; }

  void next() {
    index_ = (index_ + 1) % lengths_.size();
    left_ = lengths_[index_];
    isDash_ = !isDash_;
  }

 private:
  const std::vector<double>& lengths_;
  std::size_t index_ = 0;
  double left_ = 0;
  bool isDash_ = true;
};

double lengthOf(const Polyline& line) {
  double sum = 0;
  for (std::size_t index = 1; index < line.points.size(); ++index) {
    sum += length(line.points[index] - line.points[index - 1]);
  }
  return line.isClosed ? sum + length(line.points.front() - line.points.back()) : sum;
}

void joinEnds(std::vector<Polyline>& dashes) {
  Polyline joined = std::move(dashes.back());
  dashes.pop_back();
  const std::vector<Point>& first = dashes.front().points;
  joined.points.insert(joined.points.end(), first.begin() + 1, first.end());
  joined.isDot = false;
  dashes.front() = std::move(joined);
}

// Cuts one line, piece by piece.
class DashCutter {
 public:
  DashCutter(const DashPattern& pattern, std::vector<Polyline>& dashes) : cursor_(pattern), dashes_(dashes) {}

  bool isInDash() const { return cursor_.isDash(); }

  void begin(Point point) {
    if (cursor_.isDash()) dash_.points.push_back(point);
  }

  void cut(Point from, Point to) {
    const double whole = length(to - from);
    double done = 0;
    while (cursor_.left() <= whole - done) {
      done += cursor_.left();
      const Point place = between(from, to, done / whole);
      if (cursor_.isDash()) {
        add(place);
        flush();
      }
      cursor_.next();
      if (cursor_.isDash()) {
        dash_ = {};
        dash_.points.push_back(place);
        direction_ = to - from;
      }
    }
    cursor_.advance(whole - done);
    if (cursor_.isDash()) add(to);
  }

  // A dash that would begin where the line ends is none.
  void finish() {
    if (dash_.points.size() == 1 && cursor_.isDash() && cursor_.left() > 0) return;
    flush();
  }

 private:
  void flush() {
    if (dash_.points.empty()) return;
    if (dash_.points.size() == 1) {
      // A dash without length still shows its caps, and they need a direction to lie in.
      const double reach = length(direction_);
      dash_.isDot = reach == 0;
      if (reach > 0) dash_.points.push_back(dash_.points[0] + direction_ * (1e-6 / reach));
    }
    dashes_.push_back(std::move(dash_));
    dash_ = {};
  }

  void add(Point place) {
    if (dash_.points.empty() || dash_.points.back() != place) dash_.points.push_back(place);
  }

  DashCursor cursor_;
  std::vector<Polyline>& dashes_;
  Polyline dash_;
  Point direction_;
};

}  // namespace

bool DashPattern::isSolid() const {
  for (const double part : lengths) {
    if (part > 0) return false;
  }
  return true;
}

std::vector<Polyline> dashesOf(const Polyline& line, const DashPattern& pattern) {
  if (pattern.isSolid() || line.isDot) return {line};
  const double period = std::accumulate(pattern.lengths.begin(), pattern.lengths.end(), 0.0);
  const double count = lengthOf(line) / period * static_cast<double>(pattern.lengths.size());
  if (!(count < kMostDashes)) return {line};

  std::vector<Polyline> dashes;
  DashCutter cutter(pattern, dashes);
  const bool beginsInDash = cutter.isInDash();
  cutter.begin(line.points[0]);
  for (std::size_t index = 1; index < line.points.size(); ++index) {
    cutter.cut(line.points[index - 1], line.points[index]);
  }
  if (line.isClosed) cutter.cut(line.points.back(), line.points.front());
  const bool endsInDash = cutter.isInDash();
  cutter.finish();
  if (line.isClosed && beginsInDash && endsInDash && dashes.size() > 1) joinEnds(dashes);
  return dashes;
}

}  // namespace quillpress::level3
