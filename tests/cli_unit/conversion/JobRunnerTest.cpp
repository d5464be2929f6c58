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

TEST_F(JobRunnerTest, ANewConverterListens) {
  EXPECT_TRUE(runner_.isListening());
}

TEST_F(JobRunnerTest, AfterWhatIsWholeTheConverterListens) {
  for (const char* const text :
       {"(abc) pop ", "{ 1 } pop ", "1 2 [ 3 ", "/setlinewidth {pop} def ", "5 setlinewidth "}) {
    EXPECT_TRUE(runner_.converter().convert(text));
    EXPECT_TRUE(runner_.isListening()) << text;
  }
}

TEST_F(JobRunnerTest, WhileSomethingIsOpenItDoesNotListen) {
  for (const char* const text :
       {"(never ends", "<41", "{ 1 2 add ", "currentfile 100 string readstring abc",
        "100 100 8 [1 0 0 1 0 0] {currentfile 100 string readstring pop} image abc"}) {
    JobRunner runner;
    EXPECT_TRUE(runner.converter().convert(text));
    EXPECT_FALSE(runner.isListening()) << text;
  }
}

TEST_F(JobRunnerTest, AskingLeavesTheStackAlone) {
  EXPECT_TRUE(runner_.converter().convert("3 4 "));
  EXPECT_TRUE(runner_.isListening());
  EXPECT_EQ(contentOf("count setlinewidth "), "2 w ");
}

}  // namespace
}  // namespace quillpress::cli
