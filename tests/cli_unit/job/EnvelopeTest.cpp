#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/job/Envelope.h"
#include "tests/cli_unit/job/RecordingSink.h"

namespace quillpress::cli {
namespace {

const std::string kExit = "\x1B%-12345X";
const std::string kJob = "%!PS-Adobe-3.0\n1 setlinewidth\n";

struct Unwrapped {
  std::string text;
  std::uint64_t begin;
  bool moreJobsFollow;
};

Unwrapped unwrap(const std::string& file, std::size_t pieceSize) {
  RecordingSink sink;
  Envelope envelope(sink);
  writeInPieces(envelope, file, pieceSize);
  EXPECT_TRUE(sink.isFinished());
  return {sink.text(), sink.begin(), envelope.moreJobsFollow()};
}

void expectJob(const std::string& before, const std::string& job, const std::string& after) {
  const std::string file = before + job + after;
  for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{2}, std::size_t{7}, std::size_t{100000}}) {
    const Unwrapped result = unwrap(file, pieceSize);
    EXPECT_EQ(result.text, job) << pieceSize;
    EXPECT_EQ(result.begin, before.size()) << pieceSize;
    EXPECT_FALSE(result.moreJobsFollow) << pieceSize;
  }
}

void expectRefused(const std::string& file, const std::string& says) {
  for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{100000}}) {
    try {
      unwrap(file, pieceSize);
      ADD_FAILURE() << "taken for a job";
    } catch (const InputError& error) {
      EXPECT_NE(std::string(error.what()).find(says), std::string::npos) << error.what();
    }
  }
}

TEST(EnvelopeTest, ABareJobPassesUnchanged) {
  expectJob("", kJob, "");
}

TEST(EnvelopeTest, PrinterLanguageIsTakenOff) {
  expectJob(kExit + "@PJL SET X=1\r\n@PJL ENTER LANGUAGE = PostScript\n", kJob,
            kExit + "@PJL EOJ\r\n" + kExit);
}

TEST(EnvelopeTest, ControlDIsTakenOffAtTheEndsOnly) {
  expectJob("\x04", "%!\n(\x04 a) pop\n", "\x04\r\n\x04");
}

TEST(EnvelopeTest, AnEscapeInsideTheJobStays) {
  expectJob("", "%!\n(\x1B%-12345 \x1B%) pop\n", kExit);
}

TEST(EnvelopeTest, TheStartOfAUniversalExitAtTheEndIsPartOfTheJob) {
  expectJob("", "%!\n\x1B%-12", "");
}

TEST(EnvelopeTest, ASecondJobIsSeen) {
  EXPECT_TRUE(unwrap(kJob + kExit + kJob, 5).moreJobsFollow);
  EXPECT_FALSE(unwrap(kJob + kExit + "@PJL EOJ\n" + kExit, 5).moreJobsFollow);
}

TEST(EnvelopeTest, AnotherLanguageIsRefused) {
  expectRefused(kExit + "@PJL ENTER LANGUAGE=PCLXL\n" + kJob, "its printer language is PCLXL");
}

TEST(EnvelopeTest, ALanguageAtTheStartOfAVeryLongLineIsStillRead) {
  expectRefused("@PJL ENTER LANGUAGE=PCL" + std::string(100000, ' ') + "\n" + kJob,
                "its printer language is PCL");
}

TEST(EnvelopeTest, ALineOfAnyLengthIsPassedOver) {
  expectJob("@PJL COMMENT " + std::string(200000, 'x') + "\n", kJob, "");
  expectJob("", kJob, kExit + "@PJL COMMENT " + std::string(200000, 'x') + "\n" + kExit);
}

TEST(EnvelopeTest, ALineWithoutAnEndHoldsNoJob) {
  expectRefused("@PJL COMMENT " + std::string(20000, 'x') + kJob.substr(0, 5), "holds no PostScript job");
}

TEST(EnvelopeTest, ThousandsOfLinesAreTakenOff) {
  std::string lines;
  for (int i = 0; i < 5000; ++i) lines += "@PJL\n";
  expectJob(lines, kJob, "");
}

TEST(EnvelopeTest, NothingIsNoJob) {
  expectRefused(kExit, "holds no PostScript job");
  expectRefused("\x04\r\n", "holds no PostScript job");
}

TEST(EnvelopeTest, OtherFilesAreCalledByTheirKind) {
  expectRefused("%PDF-1.4\n", "it is a PDF file");
  expectRefused("hello", "it does not begin with %!");
}

}  // namespace
}  // namespace quillpress::cli
