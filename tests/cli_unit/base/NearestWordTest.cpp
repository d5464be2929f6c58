#include <gtest/gtest.h>

#include "cli/base/NearestWord.h"

namespace quillpress::cli {
namespace {

const std::vector<std::string> kWords{"--output", "--media", "--messages", "--no-warnings", "--run"};

TEST(NearestWordTest, FewMistakesAreForgiven) {
  EXPECT_EQ(nearestWord("--outptu", kWords), "--output");
  EXPECT_EQ(nearestWord("--nowarnings", kWords), "--no-warnings");
  EXPECT_EQ(nearestWord("--mediaa", kWords), "--media");
  EXPECT_EQ(nearestWord("-run", kWords), "--run");
}

TEST(NearestWordTest, TheBeginIsEnough) {
  EXPECT_EQ(nearestWord("--mess", kWords), "--messages");
}

TEST(NearestWordTest, NothingIsNearToOtherWords) {
  EXPECT_EQ(nearestWord("--quality", kWords), std::nullopt);
  EXPECT_EQ(nearestWord("-x", kWords), std::nullopt);
  EXPECT_EQ(nearestWord("--output", {}), std::nullopt);
}

}  // namespace
}  // namespace quillpress::cli
