#include <gtest/gtest.h>

#include "postscript/level3/geometry/Dashing.h"

namespace quillpress::level3 {
namespace {

Polyline straight(double length) {
  return {{{0, 0}, {length, 0}}, false, false};
}

std::vector<double> ends(const std::vector<Polyline>& dashes) {
  std::vector<double> result;
  for (const Polyline& dash : dashes) {
    result.push_back(dash.points.front().x);
    result.push_back(dash.points.back().x);
  }
  return result;
}

TEST(DashingTest, DashesAndGapsTakeTurns) {
  EXPECT_EQ(ends(dashesOf(straight(10), {{3, 2}, 0})), (std::vector<double>{0, 3, 5, 8}));
}

TEST(DashingTest, LastDashIsCutByTheEnd) {
  EXPECT_EQ(ends(dashesOf(straight(7), {{3, 2}, 0})), (std::vector<double>{0, 3, 5, 7}));
}

TEST(DashingTest, OffsetBeginsInsideThePattern) {
  EXPECT_EQ(ends(dashesOf(straight(7), {{3, 2}, 4})), (std::vector<double>{1, 4, 6, 7}));
}

TEST(DashingTest, NegativeOffsetBeginsBeforeThePattern) {
  EXPECT_EQ(ends(dashesOf(straight(7), {{3, 2}, -1})), (std::vector<double>{1, 4, 6, 7}));
}

TEST(DashingTest, OddPatternChangesItsPartsAtEachRound) {
  EXPECT_EQ(ends(dashesOf(straight(12), {{3}, 0})), (std::vector<double>{0, 3, 6, 9}));
}

TEST(DashingTest, ZeroesDrawSolidLines) {
  EXPECT_EQ(ends(dashesOf(straight(12), {{0, 0}, 0})), (std::vector<double>{0, 12}));
}

TEST(DashingTest, DashTurnsWithTheLine) {
  const auto dashes = dashesOf({{{0, 0}, {2, 0}, {2, 10}}, false, false}, {{4, 100}, 0});
  ASSERT_EQ(dashes.size(), 1U);
  EXPECT_EQ(dashes[0].points, (std::vector<Point>{{0, 0}, {2, 0}, {2, 2}}));
}

TEST(DashingTest, ClosedLineJoinsItsFirstAndLastDash) {
  const auto dashes = dashesOf({{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true, false}, {{8, 4}, 3});
  ASSERT_EQ(dashes.size(), 3U);
  EXPECT_EQ(dashes[0].points, (std::vector<Point>{{0, 7}, {0, 0}, {5, 0}}));
}

TEST(DashingTest, DashWithoutLengthKeepsItsDirection) {
  const auto dashes = dashesOf(straight(10), {{0, 5}, 0});
  ASSERT_GE(dashes.size(), 2U);
  EXPECT_FALSE(dashes[1].isDot);
  EXPECT_EQ(dashes[1].points.size(), 2U);
}

TEST(DashingTest, MillionsOfDashesAreDrawnSolid) {
  EXPECT_EQ(dashesOf(straight(1e9), {{0.001, 0.001}, 0}).size(), 1U);
}

}  // namespace
}  // namespace quillpress::level3
