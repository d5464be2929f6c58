#include <gtest/gtest.h>

#include "postscript/level3/geometry/Insideness.h"
#include "postscript/level3/geometry/Stroking.h"

namespace quillpress::level3 {
namespace {

Path line(std::initializer_list<Point> points, bool isClosed = false) {
  Path path;
  bool isFirst = true;
  for (const Point point : points) {
    if (isFirst) path.moveTo(point);
    if (!isFirst) path.lineTo(point);
    isFirst = false;
  }
  if (isClosed) path.close();
  return path;
}

Path outline(const Path& path, const LineStyle& style, const Matrix& matrix = {}) {
  return strokeOutline(path, style, matrix, 0.1);
}

bool paints(const Path& outline, Point point) {
  return paintsPixelAt(outline, FillRule::kNonzero, point);
}

void expectBox(const Box& box, const Box& expected) {
  EXPECT_NEAR(box.left, expected.left, 1e-6);
  EXPECT_NEAR(box.bottom, expected.bottom, 1e-6);
  EXPECT_NEAR(box.right, expected.right, 1e-6);
  EXPECT_NEAR(box.top, expected.top, 1e-6);
}

LineStyle wide(LineCap cap = LineCap::kButt, LineJoin join = LineJoin::kMiter) {
  LineStyle style;
  style.width = 10;
  style.cap = cap;
  style.join = join;
  return style;
}

TEST(StrokingTest, ButtCapsEndAtTheEnds) {
  expectBox(outline(line({{0, 0}, {100, 0}}), wide()).boundingBox(), {0, -5, 100, 5});
}

TEST(StrokingTest, SquareCapsReachHalfAWidthFurther) {
  expectBox(outline(line({{0, 0}, {100, 0}}), wide(LineCap::kSquare)).boundingBox(), {-5, -5, 105, 5});
}

TEST(StrokingTest, RoundCapsReachHalfAWidthFurther) {
  const Path path = outline(line({{0, 0}, {100, 0}}), wide(LineCap::kRound));
  EXPECT_TRUE(paints(path, {103, 0}));
  EXPECT_FALSE(paints(path, {106.5, 0}));
  EXPECT_TRUE(path.hasCurves());
}

TEST(StrokingTest, MiterReachesItsTip) {
  const Path path = outline(line({{0, 0}, {100, 0}, {100, 100}}), wide());
  expectBox(path.boundingBox(), {0, -5, 105, 100});
  EXPECT_TRUE(paints(path, {103.5, -3.5}));
}

TEST(StrokingTest, MiterBeyondTheLimitIsABevel) {
  LineStyle style = wide();
  style.miterLimit = 1.4;
  EXPECT_FALSE(paints(outline(line({{0, 0}, {100, 0}, {100, 100}}), style), {103.5, -4.5}));
}

TEST(StrokingTest, RightAngleNeedsALimitOfTheRootOfTwo) {
  LineStyle style = wide();
  style.miterLimit = 1.415;
  EXPECT_TRUE(paints(outline(line({{0, 0}, {100, 0}, {100, 100}}), style), {103.5, -4.5}));
}

TEST(StrokingTest, BevelCutsTheCorner) {
  const Path path = outline(line({{0, 0}, {100, 0}, {100, 100}}), wide(LineCap::kButt, LineJoin::kBevel));
  EXPECT_FALSE(paints(path, {103.5, -4.5}));
  EXPECT_TRUE(paints(path, {101, -2}));
}

TEST(StrokingTest, RoundJoinTurnsAroundTheCorner) {
  const Path path = outline(line({{0, 0}, {100, 0}, {100, 100}}), wide(LineCap::kButt, LineJoin::kRound));
  EXPECT_TRUE(paints(path, {102.5, -3.5}));
  EXPECT_FALSE(paints(path, {104.5, -4.8}));
}

TEST(StrokingTest, BendsToTheRightAreJoinedOnTheLeft) {
  const Path path = outline(line({{0, 0}, {100, 0}, {100, -100}}), wide());
  EXPECT_TRUE(paints(path, {103.5, 3.5}));
}

TEST(StrokingTest, ClosedLineLeavesItsMiddleFree) {
  const Path path = outline(line({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true), wide());
  EXPECT_FALSE(paints(path, {50, 50}));
  EXPECT_TRUE(paints(path, {50, 3}));
  EXPECT_TRUE(paints(path, {-4.5, -4.5}));
  EXPECT_TRUE(paints(path, {-4.5, 104}));
}

TEST(StrokingTest, LineBackOverItselfIsAsWideAsOne) {
  expectBox(outline(line({{0, 0}, {100, 0}, {50, 0}}), wide()).boundingBox(), {0, -5, 100, 5});
}

TEST(StrokingTest, DotShowsWithRoundCapsOnly) {
  const Path dot = line({{50, 50}, {50, 50}});
  expectBox(outline(dot, wide(LineCap::kRound)).boundingBox(), {45, 45, 55, 55});
  EXPECT_TRUE(outline(dot, wide()).isEmpty());
  EXPECT_TRUE(outline(dot, wide(LineCap::kSquare)).isEmpty());
}

TEST(StrokingTest, LoneMoveShowsNothing) {
  EXPECT_TRUE(outline(line({{50, 50}}), wide(LineCap::kRound)).isEmpty());
}

TEST(StrokingTest, PenIsScaledWithUserSpace) {
  expectBox(outline(line({{0, 0}, {100, 0}}), wide(), Matrix::scaling(1, 3)).boundingBox(),
            {0, -15, 100, 15});
}

TEST(StrokingTest, SingularMatrixGivesNothing) {
  EXPECT_TRUE(outline(line({{0, 0}, {100, 0}}), wide(), {1, 1, 1, 1, 0, 0}).isEmpty());
}

TEST(StrokingTest, DashesAreSeparatePieces) {
  LineStyle style = wide();
  style.dash = {{10, 5}, 0};
  const Path path = outline(line({{0, 0}, {30, 0}}), style);
  EXPECT_TRUE(paints(path, {5, 0}));
  EXPECT_FALSE(paints(path, {12, 0}));
  EXPECT_TRUE(paints(path, {20, 0}));
}

}  // namespace
}  // namespace quillpress::level3
