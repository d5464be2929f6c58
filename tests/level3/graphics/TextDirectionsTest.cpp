#include <gtest/gtest.h>

#include "postscript/level3/graphics/TextDirections.h"

namespace quillpress::level3 {
namespace {

TEST(TextDirectionsTest, WithoutTextThereIsNone) {
  EXPECT_EQ(TextDirections().most(), std::nullopt);
}

TEST(TextDirectionsTest, EachDirectionGoesToTheNearestQuarter) {
  const auto angleOf = [](Point direction) {
    TextDirections directions;
    directions.note(direction, 1);
    return directions.most();
  };
  EXPECT_EQ(angleOf({2, 1}), 0);
  EXPECT_EQ(angleOf({-1, 2}), 90);
  EXPECT_EQ(angleOf({-2, -1}), 180);
  EXPECT_EQ(angleOf({1, -2}), 270);
  EXPECT_EQ(angleOf({1, 1}), std::nullopt);
}

TEST(TextDirectionsTest, CharactersCountAndNotStrings) {
  TextDirections directions;
  directions.note({1, 0}, 2);
  directions.note({1, 0}, 2);
  directions.note({0, 1}, 5);
  EXPECT_EQ(directions.most(), 90);
}

TEST(TextDirectionsTest, OfAsManyTheSmallestAngleCounts) {
  TextDirections directions;
  directions.note({0, -1}, 3);
  directions.note({0, 1}, 3);
  EXPECT_EQ(directions.most(), 90);
}

TEST(TextDirectionsTest, TextBetweenTheQuartersTellsNothing) {
  TextDirections directions;
  directions.note({1, 0}, 2);
  directions.note({1, -1}, 3);
  EXPECT_EQ(directions.most(), std::nullopt);
}

TEST(TextDirectionsTest, ClearedItHasNone) {
  TextDirections directions;
  directions.note({1, 0}, 2);
  directions.clear();
  EXPECT_EQ(directions.most(), std::nullopt);
}

}  // namespace
}  // namespace quillpress::level3
