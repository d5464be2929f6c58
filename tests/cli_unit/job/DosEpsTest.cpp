#include <gtest/gtest.h>

#include <string>

#include "cli/job/DosEps.h"

namespace quillpress::cli {
namespace {

using std::string_literals::operator""s;

TEST(DosEpsTest, TheHeaderSaysWhereThePostScriptLies) {
  const FileSection section = postscriptSection("\xC5\xD0\xD3\xC6\x1E\x00\x00\x00\x00\x01\x02\x00"s);
  EXPECT_EQ(section.begin, 30U);
  EXPECT_EQ(section.end, 30U + 0x020100U);
}

TEST(DosEpsTest, SectionsBeyond32BitsDoNotWrap) {
  const FileSection section = postscriptSection("\xC5\xD0\xD3\xC6\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(section.begin, 0xFFFFFFFFU);
  EXPECT_EQ(section.end, 0x1FFFFFFFEU);
}

TEST(DosEpsTest, EveryOtherFileIsOneSection) {
  for (const std::string& start : {""s, "%!PS-Adobe"s, "\xC5\xD0\xD3\xC6\x1E\x00\x00"s}) {
    const FileSection section = postscriptSection(start);
    EXPECT_EQ(section.begin, 0U);
    EXPECT_EQ(section.end, UINT64_MAX);
  }
}

}  // namespace
}  // namespace quillpress::cli
