#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

#include "cli/base/Media.h"
#include "cli/job/JobComments.h"

namespace quillpress::cli {
namespace {

using Lines = std::initializer_list<std::pair<std::string_view, std::string_view>>;

JobComments taken(Lines lines) {
  JobComments comments;
  for (const auto& [keyword, value] : lines) comments.take(keyword, value);
  return comments;
}

TEST(JobCommentsTest, AJobThatSaysNothingHasA4Pages) {
  const JobComments comments;
  EXPECT_EQ(comments.defaultBox(), kA4);
  EXPECT_EQ(comments.pageBox(), std::nullopt);
  EXPECT_EQ(comments.title(), "");
  EXPECT_FALSE(comments.lacksPages());
}

TEST(JobCommentsTest, TheBoundingBoxIsTheSize) {
  EXPECT_EQ(taken({{"BoundingBox", "0 0 50 60"}}).defaultBox(), (Box{0, 0, 50, 60}));
}

TEST(JobCommentsTest, MediaGoBeforeTheBoundingBox) {
  EXPECT_EQ(
      taken({{"BoundingBox", "0 0 50 60"}, {"DocumentMedia", "(plain white) 70 80 75 () ()"}}).defaultBox(),
      (Box{0, 0, 70, 80}));
}

TEST(JobCommentsTest, MediaMayStandOnAContinuationLine) {
  EXPECT_EQ(taken({{"DocumentMedia", ""}, {"+", "plain 70 80"}}).defaultBox(), (Box{0, 0, 70, 80}));
  EXPECT_EQ(taken({{"Title", "x"}, {"+", "plain 70 80"}}).defaultBox(), kA4);
}

TEST(JobCommentsTest, PageBoxesOfTheHeaderAreDefaults) {
  EXPECT_EQ(taken({{"PageBoundingBox", "0 0 90 91"}, {"DocumentMedia", "a 70 80"}}).defaultBox(),
            (Box{0, 0, 90, 91}));
}

TEST(JobCommentsTest, TheTrailerTellsWhatTheHeaderPutsOff) {
  EXPECT_EQ(taken({{"BoundingBox", "(atend)"},
                   {"Title", "(atend)"},
                   {"Page", "1 1"},
                   {"Trailer", ""},
                   {"BoundingBox", "0 0 50 60"}})
                .defaultBox(),
            (Box{0, 0, 50, 60}));
}

TEST(JobCommentsTest, TheHeaderGoesBeforeTheTrailer) {
  const JobComments comments = taken({{"Title", "first"}, {"Trailer", ""}, {"Title", "second"}});
  EXPECT_EQ(comments.title(), "first");
}

TEST(JobCommentsTest, ResourcesInTheSetUpAreNotTheJob) {
  const JobComments comments = taken({{"EndComments", ""}, {"Title", "a font"}, {"BoundingBox", "0 0 9 9"}});
  EXPECT_EQ(comments.title(), "");
  EXPECT_EQ(comments.defaultBox(), kA4);
}

TEST(JobCommentsTest, APageHasABoxOfItsOwn) {
  JobComments comments = taken({{"Page", "1 1"}, {"PageBoundingBox", "0 0 20 30"}});
  EXPECT_EQ(comments.pageBox(), (Box{0, 0, 20, 30}));
  comments.take("Page", "2 2");
  EXPECT_EQ(comments.pageBox(), std::nullopt);
}

TEST(JobCommentsTest, ASizeThatIsNoneIsIgnored) {
  EXPECT_EQ(taken({{"BoundingBox", "0 0 0 0"}, {"DocumentMedia", "a b c"}}).defaultBox(), kA4);
  EXPECT_EQ(taken({{"Page", "1"}, {"PageBoundingBox", "wide"}}).pageBox(), std::nullopt);
}

TEST(JobCommentsTest, TitleAndCreatorAreDecoded) {
  const JobComments comments = taken({{"Title", "(a \\(b\\))"}, {"Creator", "<4142>"}});
  EXPECT_EQ(comments.title(), "a (b)");
  EXPECT_EQ(comments.creator(), "AB");
}

TEST(JobCommentsTest, FewerPagesThanPromisedAreMissed) {
  EXPECT_TRUE(taken({{"Pages", "2"}, {"Page", "1 1"}}).lacksPages());
  EXPECT_TRUE(taken({{"Pages", "2 1"}}).lacksPages());
  EXPECT_FALSE(taken({{"Pages", "1"}, {"Page", "1 1"}}).lacksPages());
  EXPECT_FALSE(taken({{"Page", "1 1"}, {"Page", "2 2"}}).lacksPages());
}

TEST(JobCommentsTest, AJobThatSaysItIsOverLacksNoPages) {
  EXPECT_FALSE(taken({{"Pages", "2"}, {"Page", "1 1"}, {"Trailer", ""}}).lacksPages());
  EXPECT_FALSE(taken({{"Pages", "2"}, {"Page", "1 1"}, {"EOF", ""}}).lacksPages());
}

TEST(JobCommentsTest, APromiseThatIsNoNumberIsNone) {
  for (const std::string_view value : {"(atend)", "", "many", "-3", "1e99"}) {
    EXPECT_FALSE(taken({{"Pages", value}}).lacksPages()) << value;
  }
}

}  // namespace
}  // namespace quillpress::cli
