#include <gtest/gtest.h>

#include <string>

#include "cli/content/InlineImage.h"

namespace quillpress::cli {
namespace {

void expectWhole(const std::string& dictionary, const std::string& data) {
  const std::string image = "BI\n" + dictionary + "\nID\n" + data + "\nEI";
  EXPECT_EQ(inlineImageLength(image + "\n1 w Q\n"), image.size()) << dictionary;
}

TEST(InlineImageTest, TheImageEndsBehindEI) {
  expectWhole("/W 3 /H 1 /BPC 8 /CS /G", "abc");
}

TEST(InlineImageTest, AnEndInsideTheDataIsData) {
  expectWhole("/W 4 /H 2 /BPC 8 /CS /G", "ab\nEI\ncd");
  expectWhole("/W 1 /H 2 /BPC 8 /CS /RGB", "\nEI\nxx");
  expectWhole("/W 1 /H 2 /BPC 8 /CS /CMYK", "\nEI\n1234");
}

TEST(InlineImageTest, DataMayBeLongerThanTheSamples) {
  expectWhole("/W 8 /H 1 /BPC 1 /CS /G", "more than a byte");
}

TEST(InlineImageTest, AMaskHasPaddedRows) {
  expectWhole("/ImageMask true /W 9 /H 3", "\nEI\nxx");
  expectWhole("/ImageMask true /W 9 /H 3", "short");
}

TEST(InlineImageTest, ImpossibleSizesAreNotBelieved) {
  expectWhole("/W 4294967295 /H 4294967295 /BPC 32 /CS /CMYK", "abc");
}

TEST(InlineImageTest, WithoutAnEndItIsAllThereIs) {
  EXPECT_EQ(inlineImageLength("BI\n/W 9 /H 9"), 12U);
  EXPECT_EQ(inlineImageLength("BI\n/W 9 /H 9 /BPC 8\nID\nabc"), 26U);
}

}  // namespace
}  // namespace quillpress::cli
