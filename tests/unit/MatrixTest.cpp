#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/MemorySet.h"
#include "postscript/lib/objects/IntegerObject.h"
#include "postscript/lib/objects/Matrix.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {
namespace {

void expectMatrix(const Matrix& matrix, const Matrix& expected) {
  EXPECT_NEAR(matrix.a, expected.a, 1e-12);
  EXPECT_NEAR(matrix.b, expected.b, 1e-12);
  EXPECT_NEAR(matrix.c, expected.c, 1e-12);
  EXPECT_NEAR(matrix.d, expected.d, 1e-12);
  EXPECT_NEAR(matrix.tx, expected.tx, 1e-12);
  EXPECT_NEAR(matrix.ty, expected.ty, 1e-12);
}

TEST(MatrixTest, IsTheIdentityAtFirst) {
  expectMatrix({}, {1, 0, 0, 1, 0, 0});
}

TEST(MatrixTest, ProductAppliesTheLeftOneFirst) {
  const Matrix product = Matrix{1, 2, 3, 4, 5, 6}.times({7, 8, 9, 10, 11, 12});
  expectMatrix(product, {1 * 7 + 2 * 9, 1 * 8 + 2 * 10, 3 * 7 + 4 * 9, 3 * 8 + 4 * 10, 5 * 7 + 6 * 9 + 11,
                         5 * 8 + 6 * 10 + 12});
  const Point point = transform(product, {1, 1});
  const Point steps = transform({7, 8, 9, 10, 11, 12}, transform({1, 2, 3, 4, 5, 6}, {1, 1}));
  EXPECT_DOUBLE_EQ(point.x, steps.x);
  EXPECT_DOUBLE_EQ(point.y, steps.y);
}

TEST(MatrixTest, ProductMayOverwriteEitherOperand) {
  const Matrix first{1, 2, 3, 4, 5, 6};
  const Matrix second{7, 8, 9, 10, 11, 12};
  const Matrix expected = first.times(second);
  Matrix left = first;
  left = left.times(second);
  expectMatrix(left, expected);
  Matrix right = second;
  right = first.times(right);
  expectMatrix(right, expected);
}

TEST(MatrixTest, InverseUndoesTheMatrix) {
  const Matrix matrix{2, 1, -3, 4, 50, -60};
  expectMatrix(matrix.times(matrix.inverse()), {});
  const Point point = transform(matrix.inverse(), transform(matrix, {3, 4}));
  EXPECT_DOUBLE_EQ(point.x, 3);
  EXPECT_DOUBLE_EQ(point.y, 4);
}

TEST(MatrixTest, SingularMatricesHaveNoInverse) {
  EXPECT_THROW((void)(Matrix{0, 0, 0, 0, 5, 5}.inverse()), Ex);
  EXPECT_THROW((void)(Matrix{1, 2, 2, 4, 0, 0}.inverse()), Ex);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW((void)(Matrix{nan, 0, 0, 1, 0, 0}.inverse()), Ex);
  EXPECT_THROW((void)(Matrix{1e300, 0, 0, 1e300, 0, 0}.inverse()), Ex);
}

TEST(MatrixTest, TranslationLeavesDistancesAlone) {
  const Point distance = transformDistance({2, 0, 0, 3, 100, 200}, {1, 1});
  EXPECT_DOUBLE_EQ(distance.x, 2);
  EXPECT_DOUBLE_EQ(distance.y, 3);
}

class MatrixArrayTest : public testing::Test {
 protected:
  Ref<ArrayObject> arrayOf(const std::vector<double>& numbers) {
    Ref<ArrayObject> array = memory_.newArray();
    for (const double number : numbers) array->elements().push(make<RealObject>(number));
    return array;
  }

  MemorySet memory_;
};

TEST_F(MatrixArrayTest, ReadsIntegersAndReals) {
  const Ref<ArrayObject> array = arrayOf({1.5, 2, 3, 4, 5});
  array->elements().push(make<IntegerObject>(6));
  expectMatrix(Matrix::of(*array), {1.5, 2, 3, 4, 5, 6});
}

TEST_F(MatrixArrayTest, ReadsNothingElse) {
  EXPECT_THROW((void)Matrix::of(*arrayOf({1, 2, 3, 4, 5})), Ex);
  const Ref<ArrayObject> array = arrayOf({1, 2, 3, 4, 5});
  array->elements().push(array->clone(0));
  EXPECT_THROW((void)Matrix::of(*array), Ex);
}

TEST_F(MatrixArrayTest, StoresReals) {
  const Ref<ArrayObject> array = arrayOf({0, 0, 0, 0, 0, 0});
  Matrix{1, 2, 3, 4, 5, 6}.storeTo(*array);
  expectMatrix(Matrix::of(*array), {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(array->printString(), "[1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 ]");
}

TEST_F(MatrixArrayTest, StoresIntoSixElementsOnly) {
  const Ref<ArrayObject> array = arrayOf({9, 9, 9, 9, 9});
  EXPECT_THROW(Matrix().storeTo(*array), Ex);
  EXPECT_EQ(array->printString(), "[9.000000 9.000000 9.000000 9.000000 9.000000 ]");
}

}  // namespace
}  // namespace quillpress
