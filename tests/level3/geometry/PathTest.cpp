#include <gtest/gtest.h>

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {
namespace {

using Kinds = std::vector<SegmentKind>;
constexpr SegmentKind kM = SegmentKind::kMove;
constexpr SegmentKind kL = SegmentKind::kLine;
constexpr SegmentKind kC = SegmentKind::kCurve;
constexpr SegmentKind kZ = SegmentKind::kClose;

Path triangle() {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({4, 0});
  path.lineTo({0, 3});
  path.close();
  return path;
}

TEST(PathTest, EmptyPathHasNoCurrentPoint) {
  EXPECT_FALSE(Path().currentPoint());
}

TEST(PathTest, MoveAfterMoveTakesItsPlace) {
  Path path;
  path.moveTo({1, 1});
  path.moveTo({2, 2});
  EXPECT_EQ(path.kinds(), Kinds{kM});
  EXPECT_EQ(path.currentPoint(), (Point{2, 2}));
}

TEST(PathTest, CloseReturnsToTheStart) {
  EXPECT_EQ(triangle().currentPoint(), (Point{0, 0}));
}

TEST(PathTest, SecondCloseAddsNothing) {
  Path path = triangle();
  path.close();
  EXPECT_EQ(path.kinds(), (Kinds{kM, kL, kL, kZ}));
}

TEST(PathTest, LineAfterCloseBeginsASubpathAtTheStart) {
  Path path = triangle();
  path.lineTo({9, 9});
  EXPECT_EQ(path.kinds(), (Kinds{kM, kL, kL, kZ, kM, kL}));
  EXPECT_EQ(path.points()[3], (Point{0, 0}));
}

TEST(PathTest, AppendDropsAMoveThatNothingFollows) {
  Path path;
  path.moveTo({7, 7});
  path.append(triangle());
  EXPECT_EQ(path, triangle());
}

TEST(PathTest, BoxTakesControlPointsIn) {
  Path path;
  path.moveTo({0, 0});
  path.curveTo({1, 5}, {2, 5}, {3, 0});
  EXPECT_EQ(path.boundingBox(), (Box{0, 0, 3, 5}));
}

TEST(PathTest, BoxLeavesALastMoveOut) {
  Path path = triangle();
  path.moveTo({100, 100});
  EXPECT_EQ(path.boundingBox(), (Box{0, 0, 4, 3}));
}

TEST(PathTest, BoxOfASingleMoveIsItsPoint) {
  Path path;
  path.moveTo({5, 6});
  EXPECT_EQ(path.boundingBox(), (Box{5, 6, 5, 6}));
}

TEST(PathTest, ReversedDrawsEachSubpathBackwards) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({1, 0});
  path.curveTo({2, 0}, {2, 1}, {1, 1});
  path.append(triangle());
  const Path back = path.reversed();
  EXPECT_EQ(back.kinds(), (Kinds{kM, kC, kL, kM, kL, kL, kZ}));
  EXPECT_EQ(back.points()[0], (Point{1, 1}));
  EXPECT_EQ(back.points()[1], (Point{2, 1}));
  EXPECT_EQ(back.points()[3], (Point{1, 0}));
  EXPECT_EQ(back.points()[4], (Point{0, 0}));
  EXPECT_EQ(back.points()[5], (Point{0, 3}));
}

TEST(PathTest, TransformedMovesTheStartToo) {
  const Path path = triangle().transformed(Matrix::translation(10, 10));
  EXPECT_EQ(path.currentPoint(), (Point{10, 10}));
}

TEST(PathTest, RectangleIsRecognisedInBothDirections) {
  Path path;
  path.appendRectangle({1, 2, 3, 5});
  EXPECT_EQ(asRectangle(path, false), (Box{1, 2, 3, 5}));
  EXPECT_EQ(asRectangle(path.reversed(), false), (Box{1, 2, 3, 5}));
}

TEST(PathTest, OpenRectangleIsOneWhereThatIsAllowed) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({0, 5});
  path.lineTo({5, 5});
  path.lineTo({5, 0});
  EXPECT_TRUE(asRectangle(path, true));
  EXPECT_FALSE(asRectangle(path, false));
}

TEST(PathTest, RectangleThatReturnsToItsStartIsOne) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({0, 5});
  path.lineTo({5, 5});
  path.lineTo({5, 0});
  path.lineTo({0, 0});
  path.close();
  EXPECT_TRUE(asRectangle(path, false));
}

TEST(PathTest, SlantedAndCurvedPathsAreNoRectangles) {
  EXPECT_FALSE(asRectangle(triangle(), true));
  Path path;
  path.moveTo({0, 0});
  path.lineTo({1, 5});
  path.lineTo({6, 5});
  path.lineTo({5, 0});
  path.close();
  EXPECT_FALSE(asRectangle(path, true));
}

}  // namespace
}  // namespace quillpress::level3
