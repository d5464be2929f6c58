#include <gtest/gtest.h>

#include <limits>

#include "cli/content/Matrix.h"

namespace quillpress::cli {
namespace {

TEST(MatrixTest, ThenMapsWithTheFirstOneFirst) {
  const Matrix scaled{2, 0, 0, 3, 0, 0};
  const Matrix moved{1, 0, 0, 1, 10, 20};
  EXPECT_EQ(scaled.then(moved), (Matrix{2, 0, 0, 3, 10, 20}));
  EXPECT_EQ(moved.then(scaled), (Matrix{2, 0, 0, 3, 20, 60}));
  EXPECT_EQ(Matrix().then(moved), moved);
}

TEST(MatrixTest, SixNumbersBeforeAPlaceAreRead) {
  const std::string_view text = "9 w 1 0 -0.5 1 5 6 cm";
  EXPECT_EQ(matrixBefore(text, text.size() - 2), (Matrix{1, 0, -0.5, 1, 5, 6}));
}

TEST(MatrixTest, FewerNumbersAreNoMatrix) {
  EXPECT_EQ(matrixBefore("w 1 0 0 1 5 cm", 12), std::nullopt);
  EXPECT_EQ(matrixBefore("cm", 0), std::nullopt);
}

TEST(MatrixTest, FlatAndInfiniteOnesCannotBeInverted) {
  EXPECT_TRUE(Matrix().isInvertible());
  EXPECT_FALSE((Matrix{1, 1, 1, 1, 0, 0}).isInvertible());
  EXPECT_FALSE((Matrix{std::numeric_limits<double>::infinity(), 0, 0, 1, 0, 0}).isInvertible());
}

TEST(MatrixStackTest, RestoreGoesBackToTheSave) {
  MatrixStack stack;
  stack.concat({2, 0, 0, 2, 0, 0});
  stack.save();
  stack.concat({1, 0, 0, 1, 5, 5});
  EXPECT_EQ(stack.current(), (Matrix{2, 0, 0, 2, 10, 10}));
  stack.restore();
  EXPECT_EQ(stack.current(), (Matrix{2, 0, 0, 2, 0, 0}));
}

TEST(MatrixStackTest, ARestoreTooManyGoesBackToTheStart) {
  MatrixStack stack;
  stack.concat({2, 0, 0, 2, 0, 0});
  stack.restore();
  EXPECT_EQ(stack.current(), Matrix());
}

}  // namespace
}  // namespace quillpress::cli
