#include <gtest/gtest.h>

#include <cmath>

#include "postscript/lib/pdf/ArcSweep.h"

namespace quillpress {
namespace {

constexpr double kShortPi = 3.1415926535;
constexpr double kTolerance = 1e-9;

struct Curve {
  double startX, startY, x1, y1, x2, y2, endX, endY;
};

// The control points stand on a circle of radius d, phi away from the ends, where d and phi are such that
// the curve touches the circle at both ends and in its middle.
Curve curveBetween(const Circle& circle, double a1, double a2) {
  const double h = (a2 - a1) / 2;
  const double k = std::cos(h);
  const double x = (4 - k) / 3;
  const double y = -((1 - k) * (k - 3)) / (3 * std::sin(h));
  const double phi = h - std::atan(y / x);
  const double d = circle.radius * std::sqrt(x * x + y * y);
  const double cx = circle.centre.x;
  const double cy = circle.centre.y;
  const double r = circle.radius;
  return {cx + r * std::cos(a1),       cy + r * std::sin(a1),       cx + d * std::cos(a1 + phi),
          cy + d * std::sin(a1 + phi), cx + d * std::cos(a2 - phi), cy + d * std::sin(a2 - phi),
          cx + r * std::cos(a2),       cy + r * std::sin(a2)};
}

void expectPiece(const ArcPiece& piece, const Curve& curve) {
  EXPECT_NEAR(piece.start.x, curve.startX, kTolerance);
  EXPECT_NEAR(piece.start.y, curve.startY, kTolerance);
  EXPECT_NEAR(piece.control1.x, curve.x1, kTolerance);
  EXPECT_NEAR(piece.control1.y, curve.y1, kTolerance);
  EXPECT_NEAR(piece.control2.x, curve.x2, kTolerance);
  EXPECT_NEAR(piece.control2.y, curve.y2, kTolerance);
  EXPECT_NEAR(piece.end.x, curve.endX, kTolerance);
  EXPECT_NEAR(piece.end.y, curve.endY, kTolerance);
}

// Expects one curve between each angle, in degrees, and the next.
void expectCuts(const std::vector<double>& degrees) {
  const Circle circle{{10, -20}, 30};
  const std::vector<ArcPiece> pieces = arcPieces(circle, degrees.front(), degrees.back());
  ASSERT_EQ(pieces.size(), degrees.size() - 1);
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    SCOPED_TRACE("piece " + std::to_string(i));
    expectPiece(pieces[i],
                curveBetween(circle, degrees[i] * kShortPi / 180, degrees[i + 1] * kShortPi / 180));
  }
}

TEST(ArcSweepTest, AQuadrantIsOneCurve) {
  expectCuts({0, 90});
  expectCuts({90, 180});
  expectCuts({-90, 0});
}

TEST(ArcSweepTest, AFullCircleIsFourCurves) {
  expectCuts({0, 90, 180, 270, 360});
}

TEST(ArcSweepTest, SweepsAreCutAtTheMultiplesOfNinety) {
  expectCuts({45, 90});
  expectCuts({45, 90, 135});
  expectCuts({30, 60});
  expectCuts({-45, 0, 45});
  expectCuts({45, 90, 180, 270, 360, 405});
  expectCuts({-10.5, 0, 90, 100.25});
}

TEST(ArcSweepTest, MoreThanATurnIsKept) {
  expectCuts({0, 90, 180, 270, 360, 450, 540, 630, 720});
}

TEST(ArcSweepTest, ClockwiseSweepsAreCutInTheSamePlaces) {
  expectCuts({90, 0});
  expectCuts({360, 270, 180, 90, 0});
  expectCuts({135, 90, 45});
  expectCuts({45, 0, -45});
  expectCuts({-10, -90, -100});
}

TEST(ArcSweepTest, AHundredThousandTurnsAreKept) {
  EXPECT_EQ(arcPieces({{0, 0}, 1}, 0, 36000000).size(), 400000U);
  EXPECT_EQ(arcPieces({{0, 0}, 1}, 36000000, 0).size(), 400000U);
}

TEST(ArcSweepTest, CurvesStayNextToTheCircle) {
  const Circle circle{{0, 0}, 1};
  const ArcPiece piece = arcPieces(circle, 0, 90).front();
  EXPECT_NEAR(piece.control1.x, 1, 1e-9);
  EXPECT_NEAR(piece.control1.y, 0.5522847498, 1e-9);
  EXPECT_NEAR(piece.control2.x, 0.5522847498, 1e-9);
  EXPECT_NEAR(piece.control2.y, 1, 1e-9);
}

TEST(ArcSweepTest, EqualAnglesHaveNoPieces) {
  EXPECT_TRUE(arcPieces({{0, 0}, 1}, 45, 45).empty());
}

TEST(ArcSweepTest, ATinySweepHasFiniteControlPoints) {
  const std::vector<ArcPiece> pieces = arcPieces({{0, 0}, 1}, 0, 1e-300);
  ASSERT_EQ(pieces.size(), 1U);
  EXPECT_TRUE(std::isfinite(pieces.front().control1.x));
  EXPECT_TRUE(std::isfinite(pieces.front().control2.y));
}

TEST(ArcSweepTest, ASweepAmongHugeAnglesEnds) {
  const std::vector<ArcPiece> pieces = arcPieces({{0, 0}, 1}, 1e18, 1e18 + 1024);
  ASSERT_FALSE(pieces.empty());
  EXPECT_LE(pieces.size(), 13U);
  EXPECT_EQ(arcPieces({{0, 0}, 1}, -1e300, -1.0000001e300).size(), 1U);
}

TEST(CornerPiecesTest, ARightAngleIsOneCurve) {
  const Circle circle{{10, -20}, 30};
  const double quarter = std::acos(0.0);
  for (const double turn : {quarter, -quarter, 0.25, -1.5}) {
    const std::vector<ArcPiece> pieces = cornerPieces(circle, 0.7, turn);
    ASSERT_EQ(pieces.size(), 1U);
    expectPiece(pieces[0], curveBetween(circle, 0.7, 0.7 + turn));
  }
}

TEST(CornerPiecesTest, AWiderTurnIsTwoEqualCurves) {
  const Circle circle{{10, -20}, 30};
  for (const double turn : {1.6, 3.1, -2.5}) {
    const std::vector<ArcPiece> pieces = cornerPieces(circle, -0.3, turn);
    ASSERT_EQ(pieces.size(), 2U);
    expectPiece(pieces[0], curveBetween(circle, -0.3, -0.3 + turn / 2));
    expectPiece(pieces[1], curveBetween(circle, -0.3 + turn / 2, -0.3 + turn));
  }
}

}  // namespace
}  // namespace quillpress
