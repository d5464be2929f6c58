#include <gtest/gtest.h>

#include "postscript/lib/pdf/PageContent.h"

namespace quillpress {
namespace {

std::string matrixText(const Matrix& matrix, std::string_view operatorText = "cm") {
  std::string text;
  appendMatrix(text, matrix, operatorText);
  return text;
}

TEST(PageContentTest, IsEmptyAtFirst) {
  EXPECT_EQ(PageContent().text(), "");
  EXPECT_EQ(PageContent().size(), 0U);
}

TEST(PageContentTest, AppendsTextsAndNumbers) {
  PageContent content;
  content.append("q ");
  content.appendNumber(0.25);
  content.append(" G ");
  EXPECT_EQ(content.text(), "q 0.25 G ");
  EXPECT_EQ(content.size(), 9U);
}

TEST(PageContentTest, PointsAreLines) {
  PageContent content;
  content.appendPoint({1.5, -2}, 'm');
  content.appendPoint({1000.26, 0.000001}, 'l');
  EXPECT_EQ(content.text(), "1.5 -2 m\n1000.3 0 l\n");
}

TEST(PageContentTest, CurvesAreLines) {
  PageContent content;
  content.appendCurve({1, 2}, {3, 4}, {5, 6});
  EXPECT_EQ(content.text(), "1 2 3 4 5 6 c\n");
}

TEST(PageContentTest, KeepsItsStorageWhenCleared) {
  PageContent content;
  content.append(std::string(10000, 'x'));
  const auto capacity = content.text().capacity();
  content.clear();
  EXPECT_EQ(content.text(), "");
  EXPECT_EQ(content.text().capacity(), capacity);
}

TEST(PageContentTest, CutsItsEndOff) {
  PageContent content;
  content.append("q 1 w Q\n");
  EXPECT_EQ(content.cutFrom(2), "1 w Q\n");
  EXPECT_EQ(content.text(), "q ");
  EXPECT_EQ(content.cutFrom(0), "q ");
  EXPECT_EQ(content.text(), "");
}

TEST(PageContentTest, NothingIsCutBehindTheEnd) {
  PageContent content;
  content.append("abc");
  EXPECT_EQ(content.cutFrom(3), "");
  EXPECT_EQ(content.cutFrom(1000), "");
  EXPECT_EQ(content.text(), "abc");
}

TEST(PageContentTest, MatricesAreSixNumbersAndTheirOperator) {
  EXPECT_EQ(matrixText({1, 2, 3, 4, 5, 6}), "1 2 3 4 5 6 cm\n");
  EXPECT_EQ(matrixText({}), "1 0 0 1 0 0 cm\n");
  EXPECT_EQ(matrixText({0.5, -0.25, 0, 1, 12345.6, 100.1234}, "]"), "0.5 -0.25 0 1 12346 100.123 ]\n");
}

TEST(PageContentTest, DegenerateMatricesAreNotWritten) {
  EXPECT_EQ(matrixText({0, 0, 0, 0, 100, 100}), "");
  EXPECT_EQ(matrixText({0.0000999, -0.0000999, 0.0000999, -0.0000999, 1, 1}), "");
}

TEST(PageContentTest, OneEntryAtTheLimitIsEnough) {
  EXPECT_EQ(matrixText({0.0001, 0, 0, 0, 0, 0}), "0.0001 0 0 0 0 0 cm\n");
  EXPECT_EQ(matrixText({0, -0.0001, 0, 0, 0, 0}), "0 -0.0001 0 0 0 0 cm\n");
  EXPECT_EQ(matrixText({0, 0, 0.0001, 0, 0, 0}), "0 0 0.0001 0 0 0 cm\n");
  EXPECT_EQ(matrixText({0, 0, 0, -0.0001, 0, 0}), "0 0 0 -0.0001 0 0 cm\n");
}

}  // namespace
}  // namespace quillpress
