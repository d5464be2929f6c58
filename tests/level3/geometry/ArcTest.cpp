#include <gtest/gtest.h>

#include <cmath>

#include "postscript/level3/geometry/Arc.h"

namespace quillpress::level3 {
namespace {

Path arc(double from, double to, Turn turn = Turn::kAnticlockwise) {
  Path path;
  appendArc(path, {}, {0, 0}, 10, from, to, turn);
  return path;
}

void expectNear(Point point, Point expected) {
  EXPECT_NEAR(point.x, expected.x, 1e-9);
  EXPECT_NEAR(point.y, expected.y, 1e-9);
}

TEST(ArcTest, FullCircleHasFourCurves) {
  EXPECT_EQ(arc(0, 360).segmentCount(), 5U);
  expectNear(*arc(0, 360).currentPoint(), {10, 0});
}

TEST(ArcTest, EndBeforeTheBeginningIsRaisedByFullTurns) {
  expectNear(*arc(90, 0).currentPoint(), {10, 0});
  EXPECT_EQ(arc(90, 0).segmentCount(), 4U);
}

TEST(ArcTest, ClockwiseGoesTheOtherWay) {
  EXPECT_EQ(arc(90, 0, Turn::kClockwise).segmentCount(), 2U);
  EXPECT_EQ(arc(0, 90, Turn::kClockwise).segmentCount(), 4U);
}

TEST(ArcTest, ArcJoinsTheCurrentPointWithALine) {
  Path path;
  path.moveTo({20, 0});
  appendArc(path, {}, {0, 0}, 10, 0, 90, Turn::kAnticlockwise);
  EXPECT_EQ(path.kinds(), (std::vector{SegmentKind::kMove, SegmentKind::kLine, SegmentKind::kCurve}));
}

TEST(ArcTest, ArcOfNoAngleIsAPoint) {
  EXPECT_EQ(arc(30, 30).kinds(), std::vector{SegmentKind::kMove});
}

TEST(ArcTest, CurvesStayOnTheCircle) {
  const Path path = arc(10, 75);
  const auto& p = path.points();
  const Point middle = (p[0] + p[1] * 3 + p[2] * 3 + p[3]) * 0.125;
  EXPECT_NEAR(std::hypot(middle.x, middle.y), 10, 0.003);
}

TEST(ArcTest, BillionsOfTurnsEnd) {
  EXPECT_LE(arc(0, 1e12).segmentCount(), 500U);
}

TEST(ArcTest, TangentPointsLieWhereTheCircleTouches) {
  const TangentArc corner = tangentArc({0, 0}, {10, 0}, {10, 10}, 2);
  EXPECT_TRUE(corner.isRound);
  expectNear(corner.first, {8, 0});
  expectNear(corner.second, {10, 2});
  expectNear(corner.centre, {8, 2});
}

TEST(ArcTest, SidesOnOneLineGiveTheCorner) {
  const TangentArc corner = tangentArc({0, 0}, {10, 0}, {20, 0}, 2);
  EXPECT_FALSE(corner.isRound);
  EXPECT_EQ(corner.first, (Point{10, 0}));
  EXPECT_EQ(corner.second, (Point{10, 0}));
}

TEST(ArcTest, TangentArcEndsAtTheSecondPoint) {
  Path path;
  path.moveTo({0, 0});
  appendTangentArc(path, {}, tangentArc({0, 0}, {10, 0}, {0, 1}, 1));
  const TangentArc corner = tangentArc({0, 0}, {10, 0}, {0, 1}, 1);
  expectNear(*path.currentPoint(), corner.second);
}

}  // namespace
}  // namespace quillpress::level3
