#include "postscript/level3/geometry/Polylines.h"

namespace quillpress::level3 {

namespace {

class Collector {
 public:
  explicit Collector(std::vector<Polyline>& result) : result_(result) {}

  void move(Point point) {
    finish();
    line_.points.push_back(point);
  }
  void line(Point point) {
    isDrawn_ = true;
    if (line_.points.back() != point) line_.points.push_back(point);
  }
  void curve(Point, Point, Point end) { line(end); }
  void close() {
    isDrawn_ = true;
    line_.isClosed = true;
  }

  void finish() {
    if (isDrawn_) {
      if (line_.isClosed && line_.points.size() > 1 && line_.points.back() == line_.points.front()) {
        line_.points.pop_back();
      }
      line_.isDot = line_.points.size() == 1;
      result_.push_back(std::move(line_));
    }
    line_ = {};
    isDrawn_ = false;
  }

 private:
  std::vector<Polyline>& result_;
  Polyline line_;
  bool isDrawn_ = false;
};

}  // namespace

std::vector<Polyline> polylinesOf(const Path& path) {
  std::vector<Polyline> result;
  Collector collector(result);
  path.visit(collector);
  collector.finish();
  return result;
}

}  // namespace quillpress::level3
