#include <gtest/gtest.h>

#include <vector>

#include "cli/job/DscScanner.h"
#include "tests/cli_unit/job/RecordingSink.h"

namespace quillpress::cli {
namespace {

using Comments = std::vector<std::string>;

// Writes comments down as "KEYWORD=VALUE@OFFSET", the offset being that of the text so far.
class RecordingHandler final : public DscHandler {
 public:
  void text(std::string_view bytes, std::uint64_t offset) override {
    EXPECT_EQ(offset, text_.size());
    text_.append(bytes);
  }

  void comment(std::string_view keyword, std::string_view value) override {
    comments_.push_back(std::string(keyword) + "=" + std::string(value) + "@" + std::to_string(text_.size()));
  }

  void endOfJob() override { hasEnded_ = true; }

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] const Comments& comments() const { return comments_; }
  [[nodiscard]] bool hasEnded() const { return hasEnded_; }

 private:
  std::string text_;
  Comments comments_;
  bool hasEnded_ = false;
};

// The comments of `job`, which are the same wherever it is cut; all of its bytes pass.
Comments commentsOf(const std::string& job) {
  Comments whole;
  for (const std::size_t pieceSize : {std::size_t{100000}, std::size_t{1}, std::size_t{2}, std::size_t{5}}) {
    RecordingHandler handler;
    DscScanner scanner(handler);
    writeInPieces(scanner, job, pieceSize);
    EXPECT_TRUE(handler.hasEnded());
    EXPECT_EQ(handler.text(), job);
    if (pieceSize == 100000) whole = handler.comments();
    EXPECT_EQ(handler.comments(), whole) << pieceSize;
  }
  return whole;
}

bool endsInData(const std::string& job) {
  RecordingHandler handler;
  DscScanner scanner(handler);
  writeInPieces(scanner, job, 3);
  return scanner.isInData();
}

TEST(DscScannerTest, CommentsComeBeforeTheBytesOfTheirLines) {
  EXPECT_EQ(commentsOf("%!\n%%Page: 1 2\nfill\n%%EOF\n"), (Comments{"Page=1 2@3", "EOF=@20"}));
}

TEST(DscScannerTest, LinesEndInAnyWay) {
  EXPECT_EQ(commentsOf("%%A: 1\r%%B: 2\r\n%%C: 3\n"), (Comments{"A=1@0", "B=2@7", "C=3@15"}));
}

TEST(DscScannerTest, ALastLineNeedsNoEnd) {
  EXPECT_EQ(commentsOf("%!\n%%EOF"), (Comments{"EOF=@3"}));
}

TEST(DscScannerTest, ValuesAreTrimmedAndColonsNeedNoBlank) {
  EXPECT_EQ(commentsOf("%%Title:  a b \t\n%%Pages:3\n%%+ x\n"),
            (Comments{"Title=a b@0", "Pages=3@16", "+=x@26"}));
}

TEST(DscScannerTest, OnlyLinesThatBeginWithTwoSignsAreComments) {
  EXPECT_EQ(commentsOf("a %%Page: 1\n%Page: 2\n %%Page: 3\n% %%Page: 4\n"), Comments{});
}

TEST(DscScannerTest, EmbeddedDocumentsKeepTheirComments) {
  EXPECT_EQ(commentsOf("%%BeginDocument: a\n%%Page: 1\n%%BeginDocument: b\n%%EndDocument\n%%Page: 2\n"
                       "%%EndDocument\n%%EndDocument\n%%Page: 3\n"),
            (Comments{"Page=3@100"}));
}

TEST(DscScannerTest, CountedBytesArePassedOver) {
  EXPECT_EQ(commentsOf("%%BeginBinary: 10\n%%Page: 1\n%%Page: 2\n"), (Comments{"Page=2@28"}));
  EXPECT_EQ(commentsOf("%%BeginData: 10 Hex Bytes\r\n%%Page: 1\n%%Page: 2\n"), (Comments{"Page=2@37"}));
}

TEST(DscScannerTest, CountedLinesArePassedOver) {
  EXPECT_EQ(commentsOf("%%BeginData: 2 ASCII Lines\n%%Page: 1\r\n%%Page: 2\r\n%%Page: 3\n"),
            (Comments{"Page=3@49"}));
}

TEST(DscScannerTest, ACountThatIsNoneIsIgnored) {
  EXPECT_EQ(commentsOf("%%BeginData: many\n%%Page: 1\n"), (Comments{"Page=1@18"}));
}

TEST(DscScannerTest, AVeryLongCommentEndsWhereItBecomesTooLong) {
  RecordingHandler handler;
  DscScanner scanner(handler);
  const std::string job = "%%Title: " + std::string(100000, 'a') + "\n";
  writeInPieces(scanner, job, 1000);
  EXPECT_EQ(handler.text(), job);
  ASSERT_EQ(handler.comments().size(), 1U);
  EXPECT_LT(handler.comments()[0].size(), 6000U);
}

TEST(DscScannerTest, DataThatIsNotCompleteIsSeen) {
  EXPECT_TRUE(endsInData("%%BeginBinary: 10\n123456789"));
  EXPECT_TRUE(endsInData("%%BeginData: 2 ASCII Lines\none\n"));
  EXPECT_FALSE(endsInData("%%BeginBinary: 10\n1234567890"));
  EXPECT_FALSE(endsInData("%!\n"));
}

}  // namespace
}  // namespace quillpress::cli
