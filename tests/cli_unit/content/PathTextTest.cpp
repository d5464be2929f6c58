#include <gtest/gtest.h>

#include "cli/content/PathText.h"

namespace quillpress::cli {
namespace {

TEST(PathTextTest, StepsAreOperatorsWithTheirOperands) {
  std::string_view text = "[3 5] 0 d\n/Pattern cs 1 w 7";
  ContentStep step = takeStep(text);
  EXPECT_EQ(step.operands, "[3 5] 0 ");
  EXPECT_EQ(step.name, "d");
  EXPECT_EQ(takeStep(text).name, "cs");
  EXPECT_EQ(takeStep(text).name, "w");
  EXPECT_EQ(takeStep(text).name, "");
}

TEST(PathTextTest, KindsOfOperatorsAreTold) {
  for (const std::string_view name : {"m", "l", "c", "h"})
    EXPECT_TRUE(buildsPath(name) && !endsPath(name)) << name;
  for (const std::string_view name : {"S", "f", "f*", "n"})
    EXPECT_TRUE(endsPath(name) && !buildsPath(name)) << name;
  for (const std::string_view name : {"W", "W*"}) EXPECT_TRUE(clips(name)) << name;
  for (const std::string_view name : {"w", "re", "cm", ""}) {
    EXPECT_FALSE(buildsPath(name) || endsPath(name) || clips(name)) << name;
  }
}

TEST(PathTextTest, AnOpenPathIsWhatNothingHasEnded) {
  const OpenPath path = openPathOf("0 0 m 1 1 l S 5 6 m\n0.5 w 7 8 l\n");
  EXPECT_TRUE(path.begins);
  EXPECT_EQ(path.text, "5 6 m\n7 8 l\n");
}

TEST(PathTextTest, WithoutAnEndThePathMayComeFromBefore) {
  const OpenPath path = openPathOf("7 8 l\n");
  EXPECT_FALSE(path.begins);
  EXPECT_EQ(path.text, "7 8 l\n");
  EXPECT_EQ(openPathOf("0 0 m 1 1 l S ").text, "");
}

TEST(PathTextTest, TheSixNumbersOfAMatrixBeginHere) {
  EXPECT_EQ(matrixBegin("9 w 1 0 0 1 5 6 cm", 16), 4U);
}

TEST(PathTextTest, APathIsMappedBackIntoTheNewSpace) {
  EXPECT_EQ(pathUnder("10 20 m 30 40 l h", {0, -1, 1, 0, 5, 6}), "-14 5 m\n-34 25 l\nh\n");
  EXPECT_EQ(pathUnder("1 2 3 4 5 6 c", {2, 0, 0, 2, 0, 0}), "0.5 1 1.5 2 2.5 3 c\n");
}

TEST(PathTextTest, AFlatSpaceHoldsNoPath) {
  EXPECT_EQ(pathUnder("10 20 m 30 40 l", {1, 1, 1, 1, 0, 0}), "");
}

}  // namespace
}  // namespace quillpress::cli
