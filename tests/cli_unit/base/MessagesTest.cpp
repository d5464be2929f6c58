#include <gtest/gtest.h>

#include <cerrno>

#include "cli/base/Messages.h"

namespace quillpress::cli {
namespace {

std::string said(std::string_view text) {
  testing::internal::CaptureStderr();
  say(text);
  return testing::internal::GetCapturedStderr();
}

TEST(MessagesTest, AMessageIsOneLineThatNamesTheProgram) {
  EXPECT_EQ(said("job.ps is empty"), "quillpress: job.ps is empty\n");
}

TEST(MessagesTest, ControlCharactersAreMadeVisible) {
  EXPECT_EQ(visible("a\x1B[2Jb\n\t\x7F"), "a\\x1B[2Jb\\x0A\\x09\\x7F");
  EXPECT_EQ(visible(std::string_view("\0", 1)), "\\x00");
}

TEST(MessagesTest, ControlCharactersBeyondAsciiAreMadeVisible) {
  EXPECT_EQ(visible("\xC2\x9B"
                    "2J"),
            "\\xC2\\x9B"
            "2J");
}

TEST(MessagesTest, TextInUtf8Stays) {
  const std::string text = "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x96\xA8 \xC2\xA0";
  EXPECT_EQ(visible(text), text);
}

TEST(MessagesTest, BytesThatAreNoUtf8AreMadeVisible) {
  EXPECT_EQ(visible("\xE4"), "\\xE4");
  EXPECT_EQ(visible("\x9B"
                    "2J"),
            "\\x9B"
            "2J");
  EXPECT_EQ(visible("\xE2\x82"), "\\xE2\\x82");
  EXPECT_EQ(visible("\xC0\x9B"), "\\xC0\\x9B");
  EXPECT_EQ(visible("\xF8\x80\x80\x80\x80"), "\\xF8\\x80\\x80\\x80\\x80");
}

TEST(MessagesTest, ShortTextIsNotCut) {
  const std::string text(200, 'a');
  EXPECT_EQ(shortened(text), text);
}

TEST(MessagesTest, LongTextKeepsItsBeginAndItsEndIn200Bytes) {
  const std::string text = "begin " + std::string(10000, 'a') + " end";
  const std::string cut = shortened(text);
  EXPECT_EQ(cut.size(), 200U);
  EXPECT_TRUE(cut.starts_with("begin aaa"));
  EXPECT_TRUE(cut.ends_with("aaa end"));
  EXPECT_NE(cut.find("a...a"), std::string::npos);
}

TEST(MessagesTest, NoCharacterIsCutInHalf) {
  for (std::size_t shift = 0; shift < 3; ++shift) {
    std::string text(shift, 'a');
    for (int i = 0; i < 200; ++i) text += "\xE2\x82\xAC";
    const std::string cut = shortened(text);
    EXPECT_LE(cut.size(), 200U);
    EXPECT_EQ(visible(cut), cut);
  }
}

TEST(MessagesTest, ALineIsAtMost200BytesLong) {
  EXPECT_EQ(said(std::string(5000, 'x')).size(), 201U);
  EXPECT_EQ(said(std::string(5000, '\x1B')).size(), 201U);
}

TEST(MessagesTest, TheSystemTellsItsReason) {
  errno = ENOENT;
  EXPECT_EQ(systemReason(), "No such file or directory");
}

TEST(MessagesTest, OneIsSingular) {
  EXPECT_EQ(counted(0, "page"), "0 pages");
  EXPECT_EQ(counted(1, "page"), "1 page");
  EXPECT_EQ(counted(5000000000, "page"), "5000000000 pages");
}

}  // namespace
}  // namespace quillpress::cli
