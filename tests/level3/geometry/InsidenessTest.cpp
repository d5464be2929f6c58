#include <gtest/gtest.h>

#include "postscript/level3/geometry/Insideness.h"

namespace quillpress::level3 {
namespace {

Path square(double left, double bottom, double side) {
  Path path;
  path.appendRectangle({left, bottom, left + side, bottom + side});
  return path;
}

TEST(InsidenessTest, PointInsideIsPainted) {
  EXPECT_TRUE(paintsPixelAt(square(0, 0, 10), FillRule::kNonzero, {5, 5}));
  EXPECT_FALSE(paintsPixelAt(square(0, 0, 10), FillRule::kNonzero, {15, 5}));
}

TEST(InsidenessTest, PixelThatTheEdgeTouchesIsPainted) {
  EXPECT_TRUE(paintsPixelAt(square(0.5, 0.5, 10), FillRule::kNonzero, {0.1, 0.1}));
}

TEST(InsidenessTest, OpenSubpathIsClosedByFilling) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({10, 0});
  path.lineTo({10, 10});
  EXPECT_TRUE(paintsPixelAt(path, FillRule::kNonzero, {7, 3}));
}

TEST(InsidenessTest, EvenOddLeavesWhatIsCoveredTwice) {
  Path path = square(0, 0, 30);
  path.append(square(10, 10, 10));
  EXPECT_TRUE(paintsPixelAt(path, FillRule::kNonzero, {15, 15}));
  EXPECT_FALSE(paintsPixelAt(path, FillRule::kEvenOdd, {15, 15}));
}

TEST(InsidenessTest, OppositeTurnsLeaveAHole) {
  Path path = square(0, 0, 30);
  path.append(square(10, 10, 10).reversed());
  EXPECT_FALSE(paintsPixelAt(path, FillRule::kNonzero, {15, 15}));
}

TEST(InsidenessTest, AperturesMeetByEdgeOrByLyingInside) {
  EXPECT_TRUE(paintsInside(square(0, 0, 10), FillRule::kNonzero, square(5, 5, 10)));
  EXPECT_TRUE(paintsInside(square(0, 0, 10), FillRule::kNonzero, square(2, 2, 2)));
  EXPECT_TRUE(paintsInside(square(2, 2, 2), FillRule::kNonzero, square(0, 0, 10)));
  EXPECT_FALSE(paintsInside(square(0, 0, 10), FillRule::kNonzero, square(20, 20, 5)));
}

TEST(InsidenessTest, EmptyPathsPaintNothing) {
  EXPECT_FALSE(paintsPixelAt(Path(), FillRule::kNonzero, {0, 0}));
  EXPECT_FALSE(paintsInside(Path(), FillRule::kNonzero, square(0, 0, 10)));
}

}  // namespace
}  // namespace quillpress::level3
