#include <gtest/gtest.h>

#include <chrono>

#include "cli/base/TextScan.h"
#include "cli/content/PathKeeper.h"

namespace quillpress::cli {
namespace {

// `text` with single blanks for its white space.
std::string flat(std::string_view text) {
  std::string result;
  for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
    result.append(word).append(" ");
  }
  return result;
}

std::string rewritten(std::string_view text) {
  PathKeeper keeper;
  return flat(keeper.rewrite(text));
}

TEST(PathKeeperTest, APathThatIsPaintedAtOnceStays) {
  EXPECT_EQ(rewritten("0 0 m 9 9 l S q 1 1 m 2 2 l f Q "), "0 0 m 9 9 l S q 1 1 m 2 2 l f Q ");
}

TEST(PathKeeperTest, APathSurvivesRestore) {
  EXPECT_EQ(rewritten("0 0 m 9 9 l q f Q S "), "0 0 m 9 9 l n q 0 0 m 9 9 l f Q 0 0 m 9 9 l S ");
}

TEST(PathKeeperTest, APathThatComesInTwoTextsIsOne) {
  PathKeeper keeper;
  EXPECT_EQ(flat(keeper.rewrite("0 0 m ")), "0 0 m ");
  EXPECT_EQ(flat(keeper.rewrite("9 9 l ")), "9 9 l ");
  EXPECT_EQ(flat(keeper.rewrite("q f Q ")), "n q 0 0 m 9 9 l f Q ");
  EXPECT_EQ(flat(keeper.rewrite("S ")), "0 0 m 9 9 l S ");
}

TEST(PathKeeperTest, SeveralMatricesActTogether) {
  EXPECT_EQ(rewritten("4 8 m 8 8 l 2 0 0 2 0 0 cm 1 0 0 1 1 1 cm 0.5 0 0 0.5 0 0 cm S "),
            "4 8 m 8 8 l n 2 0 0 2 0 0 cm 1 0 0 1 1 1 cm 0.5 0 0 0.5 0 0 cm 2 6 m 6 6 l S ");
}

TEST(PathKeeperTest, AMatrixBetweenSaveAndRestoreIsForgotten) {
  EXPECT_EQ(rewritten("4 8 m 8 8 l q 2 0 0 2 0 0 cm f Q S "),
            "4 8 m 8 8 l n q 2 0 0 2 0 0 cm 2 4 m 4 4 l f Q 4 8 m 8 8 l S ");
}

TEST(PathKeeperTest, AFlatSpaceDropsThePath) {
  EXPECT_EQ(rewritten("4 8 m 8 8 l q 1 1 1 1 0 0 cm 2 0 0 2 0 0 cm f Q S "),
            "4 8 m 8 8 l n q 1 1 1 1 0 0 cm 2 0 0 2 0 0 cm f Q 4 8 m 8 8 l S ");
}

TEST(PathKeeperTest, ANewPathGivesTheOldOneUp) {
  EXPECT_EQ(rewritten("0 0 m 9 9 l q f Q 1 1 m 2 2 l S "), "0 0 m 9 9 l n q 0 0 m 9 9 l f Q 1 1 m 2 2 l S ");
}

TEST(PathKeeperTest, ALongPathSavedAndTurnedThousandsOfTimesCostsLittle) {
  std::string text = "0 0 m\n";
  for (int i = 0; i < 50000; ++i) text += "1 1 l\n";
  for (int i = 0; i < 50000; ++i) text += "q\n1 0 0 1 1 0 cm\n";
  const auto begin = std::chrono::steady_clock::now();
  PathKeeper keeper;
  const std::size_t size = keeper.rewrite(text).size();
  // Copying and mapping the path each time would take 15 GB and minutes.
  EXPECT_LT(size, text.size() + 10);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

}  // namespace
}  // namespace quillpress::cli
