#include <gtest/gtest.h>

#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {
namespace {

TEST(Level3MatrixTest, ProductAppliesTheLeftOneFirst) {
  const Matrix product = Matrix::scaling(2, 3) * Matrix::translation(10, 20);
  EXPECT_EQ(product.apply({1, 1}), (Point{12, 23}));
}

TEST(Level3MatrixTest, DistancesAreNotMoved) {
  EXPECT_EQ((Matrix{2, 0, 0, 2, 100, 100}.applyToDistance({1, 2})), (Point{2, 4}));
}

TEST(Level3MatrixTest, QuarterTurnsAreExact) {
  EXPECT_EQ(Matrix::rotation(90), (Matrix{0, 1, -1, 0, 0, 0}));
  EXPECT_EQ(Matrix::rotation(-90), (Matrix{0, -1, 1, 0, 0, 0}));
  EXPECT_EQ(Matrix::rotation(540), (Matrix{-1, 0, 0, -1, 0, 0}));
}

TEST(Level3MatrixTest, InverseLeadsBack) {
  const Matrix matrix{2, 1, -1, 4, 7, 9};
  const Point point = matrix.inverse()->apply(matrix.apply({3, -5}));
  EXPECT_NEAR(point.x, 3, 1e-12);
  EXPECT_NEAR(point.y, -5, 1e-12);
}

TEST(Level3MatrixTest, FlatMatrixHasNoInverse) {
  EXPECT_FALSE((Matrix{1, 2, 2, 4, 0, 0}.inverse()));
  EXPECT_FALSE((Matrix{0, 0, 0, 0, 1, 1}.inverse()));
}

TEST(Level3MatrixTest, SimilarityTurnsMirrorsAndScalesAlike) {
  EXPECT_TRUE((Matrix::rotation(30) * Matrix::scaling(5, -5)).isSimilarity());
  EXPECT_FALSE(Matrix::scaling(2, 3).isSimilarity());
  EXPECT_FALSE((Matrix{1, 0, 1, 1, 0, 0}.isSimilarity()));
}

TEST(Level3MatrixTest, AxesAreKeptByScalingAndQuarterTurns) {
  EXPECT_TRUE(Matrix::scaling(2, -3).keepsAxes());
  EXPECT_TRUE(Matrix::rotation(90).keepsAxes());
  EXPECT_FALSE(Matrix::rotation(45).keepsAxes());
}

}  // namespace
}  // namespace quillpress::level3
