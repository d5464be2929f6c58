#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "cli/job/InputKind.h"

namespace quillpress::cli {
namespace {

using std::string_view_literals::operator""sv;

TEST(InputKindTest, KnownFilesAreNamed) {
  const std::vector<std::pair<std::string_view, std::string_view>> kinds{
      {"%PDF-1.7", "it is a PDF file"},
      {") HP-PCL XL;2;0", "it is a PCL XL job"},
      {"\x1B"
       "E",
       "it is a PCL or other escape sequence job"},
      {"PK\x03\x04", "it is a ZIP or XPS file"},
      {"\x89PNG\r\n", "it is a PNG picture"},
      {"\xFF\xD8\xFF\xE0", "it is a JPEG picture"},
      {"II*\0"sv, "it is a TIFF picture"},
      {"MM\0*"sv, "it is a TIFF picture"},
      {"\x1F\x8B\x08", "it is compressed with gzip"},
      {"\x7F"
       "ELF",
       "it is a program"},
  };
  for (const auto& [start, kind] : kinds) EXPECT_EQ(describeInput(start), kind);
}

TEST(InputKindTest, UnknownFilesAreNotGuessed) {
  for (const std::string_view start : {"", "%", "hello", "PK", "%PD"}) {
    EXPECT_EQ(describeInput(start), "it does not begin with %!") << start;
  }
}

}  // namespace
}  // namespace quillpress::cli
