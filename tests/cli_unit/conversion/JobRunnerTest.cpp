#include <gtest/gtest.h>

#include <chrono>

#include "cli/conversion/JobRunner.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class JobRunnerTest : public FolderTest {
 protected:
  void setUp(std::string_view text) {
    runner_.recordSetUp(spool_);
    runner_.record(text);
    EXPECT_TRUE(runner_.converter().convert(text));
  }

  void failWith(std::string_view text) { EXPECT_FALSE(runner_.converter().convert(text)); }

  std::string contentOf(std::string_view text) {
    const auto content = runner_.converter().convert(text);
    return content ? std::string(*content) : runner_.converter().errorText();
  }

  Spool spool_{folder()};
  JobRunner runner_;
};

TEST_F(JobRunnerTest, AfterAnErrorTheNextPageFindsWhatTheJobHasDefined) {
  setUp("/a 4 def ");
  failWith("/b 5 def {wrong} exec ");
  runner_.recover();
  EXPECT_EQ(contentOf("a b add setlinewidth "), "9 w ");
}

TEST_F(JobRunnerTest, WhereTheInterpreterCannotBeRunOutTheSetUpRunsAgain) {
  setUp("/a 4 def ");
  failWith("/later 5 def (\\q");
  runner_.recover();
  EXPECT_EQ(contentOf("a setlinewidth "), "4 w ");
  EXPECT_EQ(contentOf("/later where {pop 1} {2} ifelse setlinewidth "), "2 w ");
}

TEST_F(JobRunnerTest, ALoopWithoutAnEndIsLeft) {
  setUp("/a 4 def /go true def ");
  const auto begin = std::chrono::steady_clock::now();
  failWith("{go {/go false def wrong} if} loop ");
  runner_.recover();
  EXPECT_EQ(contentOf("a setlinewidth "), "4 w ");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST_F(JobRunnerTest, LoopsOnManyPagesCostNoMoreThanAFew) {
  setUp("/a 4 def /go true def ");
  const auto begin = std::chrono::steady_clock::now();
  for (int page = 0; page < 100; ++page) {
    failWith("/go true def {go {/go false def wrong} if} loop ");
    runner_.recover();
    EXPECT_EQ(contentOf("a setlinewidth "), "4 w ");
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
}

TEST_F(JobRunnerTest, ASetUpThatFailedIsNotRunAgain) {
  setUp("/a 4 def ");
  runner_.forgetSetUp();
  failWith("(\\q");
  runner_.recover();
  EXPECT_EQ(contentOf("/a where {pop 1} {2} ifelse setlinewidth "), "2 w ");
}

TEST_F(JobRunnerTest, TextsAreCounted) {
  setUp("(a) show ");
  EXPECT_EQ(runner_.textsShown(), 1U);
}

TEST_F(JobRunnerTest, TextsAreCountedAfterAnErrorToo) {
  setUp("(a) show ");
  failWith("{wrong (b) show} exec ");
  EXPECT_EQ(runner_.textsShownAfterError(), 2U);
}

TEST_F(JobRunnerTest, CountingNeverWaitsForALoop) {
  setUp("/go true def ");
  failWith("{go {/go false def wrong} if} loop ");
  EXPECT_EQ(runner_.textsShownAfterError(), std::nullopt);
}

}  // namespace
}  // namespace quillpress::cli
