#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/conversion/Conversion.h"
#include "tests/cli_unit/TemporaryFolder.h"
#include "tests/cli_unit/job/RecordingSink.h"

namespace quillpress::cli {
namespace {

// Keeps complete pages, and refuses text that holds "99 w".
class RecordingPages final : public PageOutput {
 public:
  void beginPage() override { text_.clear(); }

  void append(std::string_view text) override {
    text_ += text;
    if (text_.find("99 w") != std::string::npos) throw PageError("99 is too much");
  }

  void endPage(const std::optional<Box>& box, Converter& /*converter*/) override {
    if (text_.find("98 w") != std::string::npos) throw PageError("98 is too much");
    pages_.push_back(text_);
    boxes_.push_back(box);
  }

  void dropPage() override { text_ = "dropped"; }

  [[nodiscard]] const std::vector<std::string>& pages() const { return pages_; }
  [[nodiscard]] const std::vector<std::optional<Box>>& boxes() const { return boxes_; }

 private:
  std::string text_;
  std::vector<std::string> pages_;
  std::vector<std::optional<Box>> boxes_;
};

using Pages = std::vector<std::string>;

class ConversionTest : public FolderTest {
 protected:
  // Converts `job` as the file of the test, and leaves what has come of it in the members.
  void convert(const std::string& job, bool keepGoing = false, std::size_t chunkSize = 65536) {
    const std::string file = write("job.ps", job);
    testing::internal::CaptureStderr();
    JobRunner runner;
    Conversion conversion({file, chunkSize, keepGoing}, runner, output_);
    DscScanner scanner(conversion);
    writeInPieces(scanner, job, 1000);
    said_ = testing::internal::GetCapturedStderr();
    hasFailed_ = conversion.hasFailed();
    endsInside_ = conversion.endsInside();
  }

  void expectSaid(const std::string& text) const {
    EXPECT_NE(said_.find("job.ps: " + text), std::string::npos) << said_;
  }

  RecordingPages output_;
  std::string said_;
  bool hasFailed_ = false;
  bool endsInside_ = false;
};

TEST_F(ConversionTest, AJobWithoutCommentsIsOnePage) {
  convert("%!\n1 setlinewidth showpage 2 setlinewidth");
  EXPECT_EQ(output_.pages(), Pages{"1 w 2 w "});
  EXPECT_FALSE(hasFailed_ || endsInside_);
}

TEST_F(ConversionTest, WhatStandsBeforeTheFirstPageIsPartOfIt) {
  convert("%!\n1 setlinewidth\n%%Page: 1 1\n2 setlinewidth\n%%Page: 2 2\n3 setlinewidth\n");
  EXPECT_EQ(output_.pages(), (Pages{"1 w 2 w ", "3 w "}));
}

TEST_F(ConversionTest, PagesHaveTheirBoxes) {
  convert("%!\n%%Page: 1 1\n%%PageBoundingBox: 0 0 20 30\n%%Page: 2 2\n");
  ASSERT_EQ(output_.boxes().size(), 2U);
  EXPECT_EQ(output_.boxes()[0], (Box{0, 0, 20, 30}));
  EXPECT_EQ(output_.boxes()[1], std::nullopt);
}

TEST_F(ConversionTest, AnErrorStopsTheJobAtItsPage) {
  convert("%!\n%%Page: 1 1\n1 setlinewidth\n%%Page: 2 2\nwrong\n%%Page: 3 3\n3 setlinewidth\n");
  EXPECT_EQ(output_.pages(), Pages{"1 w "});
  EXPECT_TRUE(hasFailed_);
  expectSaid("page 2, in the 18 bytes from byte 30: Exception:");
}

TEST_F(ConversionTest, AnErrorInAChunkOfOneByteHasItsPlace) {
  convert("%!\nwrong ", false, 1);
  expectSaid("page 1, byte 8: Exception:");
}

TEST_F(ConversionTest, KeepGoingLeavesThePageOut) {
  convert("%!\n%%Page: 1 1\n1 setlinewidth\n%%Page: 2 2\nwrong\n%%Page: 3 3\n3 setlinewidth\n", true);
  EXPECT_EQ(output_.pages(), (Pages{"1 w ", "3 w "}));
  EXPECT_TRUE(hasFailed_);
}

TEST_F(ConversionTest, APageThatCannotBeToldIsAnErrorOfThatPage) {
  convert("%!\n%%Page: 1 1\n1 setlinewidth\n%%Page: 2 2\n99 setlinewidth\n%%Page: 3 3\n3 setlinewidth\n");
  EXPECT_EQ(output_.pages(), Pages{"1 w "});
  EXPECT_TRUE(hasFailed_);
  expectSaid("page 2: 99 is too much\n");
}

TEST_F(ConversionTest, KeepGoingLeavesSuchAPageOutToo) {
  convert("%!\n%%Page: 1 1\n99 setlinewidth\n%%Page: 2 2\n98 setlinewidth\n%%Page: 3 3\n3 setlinewidth\n",
          true);
  EXPECT_EQ(output_.pages(), Pages{"3 w "});
  expectSaid("page 1: 99 is too much\n");
  expectSaid("page 2: 98 is too much\n");
}

TEST_F(ConversionTest, APageThatFailsAtItsEndStopsTheJob) {
  convert("%!\n%%Page: 1 1\n98 setlinewidth\n%%Page: 2 2\n2 setlinewidth\n");
  EXPECT_EQ(output_.pages(), Pages{});
  EXPECT_TRUE(hasFailed_);
}

TEST_F(ConversionTest, TheLastPageMayFailAtItsEnd) {
  convert("%!\n98 setlinewidth");
  EXPECT_EQ(output_.pages(), Pages{});
  EXPECT_TRUE(hasFailed_);
  expectSaid("page 1: 98 is too much\n");
}

TEST_F(ConversionTest, AJobMayEndInside) {
  for (const char* const end :
       {"(abc", "{ 1 2", "<41", "9 9 8 [1 0 0 1 0 0] {currentfile 9 string readstring pop} image x"}) {
    convert(std::string("%!\n1 setlinewidth ") + end);
    EXPECT_TRUE(endsInside_) << end;
    EXPECT_FALSE(hasFailed_) << end;
  }
}

TEST_F(ConversionTest, AJobThatEndsInsideAfterAnErrorHasAnError) {
  convert("%!\nwrong (abc");
  EXPECT_FALSE(endsInside_);
  EXPECT_TRUE(hasFailed_);
}

TEST_F(ConversionTest, ChunksDoNotMatter) {
  for (const std::size_t chunkSize : {1U, 2U, 7U, 1000U}) {
    convert("%!\n1 setlinewidth\n%%Page: 1 1\n2 setlinewidth\n%%Page: 2 2\n3 setlinewidth", false, chunkSize);
    ASSERT_GE(output_.pages().size(), 2U);
    EXPECT_EQ(*(output_.pages().end() - 2), "1 w 2 w ");
    EXPECT_EQ(output_.pages().back(), "3 w ");
  }
}

}  // namespace
}  // namespace quillpress::cli
