#include <gtest/gtest.h>

#include <cmath>

#include "postscript/level3/geometry/Arc.h"
#include "postscript/level3/geometry/Flattening.h"

namespace quillpress::level3 {
namespace {

Path circle() {
  Path path;
  appendArc(path, {}, {0, 0}, 1000, 0, 360, Turn::kAnticlockwise);
  return path;
}

TEST(FlatteningTest, LinesStayWithinTheFlatness) {
  for (const double flatness : {0.2, 1.0, 20.0}) {
    const Path path = flattened(circle(), flatness);
    EXPECT_FALSE(path.hasCurves());
    const auto& points = path.points();
    for (std::size_t index = 1; index < points.size(); ++index) {
      const Point middle = between(points[index - 1], points[index], 0.5);
      EXPECT_NEAR(std::hypot(middle.x, middle.y), 1000, flatness + 0.3);
    }
  }
}

TEST(FlatteningTest, CoarserFlatnessMakesFewerLines) {
  EXPECT_LT(flattened(circle(), 20).segmentCount(), flattened(circle(), 0.2).segmentCount());
}

TEST(FlatteningTest, EndsStayExactlyWhereTheyAre) {
  EXPECT_EQ(flattened(circle(), 1).currentPoint(), circle().currentPoint());
}

TEST(FlatteningTest, LinesAreLeftAlone) {
  Path path;
  path.appendRectangle({0, 0, 1, 1});
  EXPECT_EQ(flattened(path, 1), path);
}

TEST(FlatteningTest, EndlessCurvesEnd) {
  Path path;
  path.moveTo({0, 0});
  path.curveTo({1e300, 1e300}, {-1e300, 1e300}, {0, 1});
  EXPECT_LE(flattened(path, 0.1).segmentCount(), 1001U);
}

}  // namespace
}  // namespace quillpress::level3
