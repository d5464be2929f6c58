#include <gtest/gtest.h>

#include <initializer_list>

#include "postscript/level3/device/PageOrientation.h"

namespace quillpress::level3 {
namespace {

constexpr std::string_view kHeader = "%!PS-Adobe-3.0";
constexpr bool kIsWide = true;

PageOrientation after(std::initializer_list<std::string_view> comments) {
  PageOrientation orientation;
  for (const std::string_view comment : comments) orientation.take(comment);
  return orientation;
}

std::optional<int> angleAfter(std::initializer_list<std::string_view> comments, std::optional<int> textAngle,
                              bool isPageWide = false) {
  return after(comments).angle(textAngle, isPageWide);
}

TEST(PageOrientationTest, WithoutCommentsTheTextTells) {
  EXPECT_EQ(angleAfter({}, std::nullopt), std::nullopt);
  for (const int angle : {0, 90, 180, 270}) EXPECT_EQ(angleAfter({}, angle), angle);
}

TEST(PageOrientationTest, PortraitIsTurnedForTextUpsideDownOnly) {
  const auto comments = {kHeader, std::string_view("%%Orientation: Portrait")};
  EXPECT_EQ(angleAfter(comments, std::nullopt), 0);
  EXPECT_EQ(angleAfter(comments, 0), 0);
  EXPECT_EQ(angleAfter(comments, 90), 0);
  EXPECT_EQ(angleAfter(comments, 180), 180);
  EXPECT_EQ(angleAfter(comments, 270), 0);
}

TEST(PageOrientationTest, LandscapeIsTurnedTheWayThatTheTextRuns) {
  const auto comments = {kHeader, std::string_view("%%Orientation: Landscape")};
  EXPECT_EQ(angleAfter(comments, std::nullopt), 90);
  EXPECT_EQ(angleAfter(comments, 0), 90);
  EXPECT_EQ(angleAfter(comments, 90), 90);
  EXPECT_EQ(angleAfter(comments, 180), 90);
  EXPECT_EQ(angleAfter(comments, 270), 270);
}

TEST(PageOrientationTest, AWidePageIsLandscapeAlready) {
  const auto comments = {kHeader, std::string_view("%%Orientation: Landscape")};
  EXPECT_EQ(angleAfter(comments, std::nullopt, kIsWide), 0);
  EXPECT_EQ(angleAfter(comments, 0, kIsWide), 0);
  EXPECT_EQ(angleAfter(comments, 90, kIsWide), 90);
  EXPECT_EQ(angleAfter(comments, 180, kIsWide), 180);
}

TEST(PageOrientationTest, APagesOwnCommentCountsMoreAndForThatPageAlone) {
  PageOrientation orientation =
      after({kHeader, "%%Orientation: Landscape", "%%Page: 1 1", "%%PageOrientation: Portrait"});
  EXPECT_EQ(orientation.angle(0, false), 0);
  orientation.take("%%Page: 2 2");
  EXPECT_EQ(orientation.angle(0, false), 90);
}

TEST(PageOrientationTest, ADefaultForPagesCountsMoreThanTheDocuments) {
  EXPECT_EQ(angleAfter({kHeader, "%%Orientation: Portrait", "%%BeginDefaults", "%%PageOrientation: Landscape",
                        "%%EndDefaults", "%%Page: 1 1"},
                       0),
            90);
}

TEST(PageOrientationTest, AViewingMatrixCountsMost) {
  const auto viewed = [](std::string_view matrix, std::optional<int> textAngle) {
    return angleAfter({kHeader, "%%Orientation: Landscape", "%%Page: 1 1", matrix}, textAngle, kIsWide);
  };
  EXPECT_EQ(viewed("%%ViewingOrientation: 1 0 0 1", 90), 0);
  EXPECT_EQ(viewed("%%ViewingOrientation: 1 0 0 1", 180), 180);
  EXPECT_EQ(viewed("%%ViewingOrientation: 0 1 -1 0", 0), 90);
  EXPECT_EQ(viewed("%%ViewingOrientation: 0 1 -1 0", 270), 270);
  EXPECT_EQ(viewed("%%ViewingOrientation: -1 0 0 -1", 0), 180);
  EXPECT_EQ(viewed("%%ViewingOrientation: 0 -1 1 0", 90), 270);
}

TEST(PageOrientationTest, AMatrixThatTurnsByNoQuarterIsPassedOver) {
  for (const std::string_view matrix : {"%%ViewingOrientation: 1 0 0 -1", "%%ViewingOrientation: 0 1",
                                        "%%ViewingOrientation: x", "%%ViewingOrientation"}) {
    EXPECT_EQ(angleAfter({kHeader, "%%Page: 1 1", matrix}, 180), 180) << matrix;
  }
}

TEST(PageOrientationTest, AMatrixBeforeThePagesIsPassedOver) {
  EXPECT_EQ(angleAfter({kHeader, "%%ViewingOrientation: 0 1 -1 0", "%%Page: 1 1"}, 0), 0);
}

TEST(PageOrientationTest, OtherWordsArePassedOver) {
  for (const std::string_view comment :
       {"%%Orientation: Seascape", "%%Orientation: (atend)", "%%Orientation:", "%%Orientation", "%%"}) {
    EXPECT_EQ(angleAfter({kHeader, comment}, 180), 180) << comment;
  }
}

TEST(PageOrientationTest, BlanksAroundAWordDoNotMatter) {
  EXPECT_EQ(angleAfter({kHeader, "%%Orientation:\t Landscape \r"}, 0), 90);
  EXPECT_EQ(angleAfter({kHeader, "%%Orientation:Landscape"}, 0), 90);
}

TEST(PageOrientationTest, CommentsOfAJobThatDoesNotFollowTheConventionsSayNothing) {
  EXPECT_EQ(angleAfter({"%!", "%%Orientation: Landscape"}, 0), 0);
}

TEST(PageOrientationTest, CommentsOfADocumentWithinTheDocumentSayNothing) {
  EXPECT_EQ(angleAfter({kHeader, "%%BeginDocument: picture.eps", "%!PS-Adobe-3.0 EPSF-3.0",
                        "%%Orientation: Landscape", "%%EndDocument"},
                       0),
            0);
  EXPECT_EQ(angleAfter({kHeader, "%%BeginDocument: picture.eps", "%%EndDocument", "%%EndDocument",
                        "%%Orientation: Landscape"},
                       0),
            90);
}

}  // namespace
}  // namespace quillpress::level3
