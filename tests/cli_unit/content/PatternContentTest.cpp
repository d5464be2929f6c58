#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/content/PatternContent.h"

namespace quillpress::cli {
namespace {

TEST(PatternContentTest, BalancedContentStays) {
  EXPECT_EQ(readPatternContent("q 1 w Q\n").text, "q 1 w Q\n");
  EXPECT_EQ(readPatternContent("").text, "");
}

TEST(PatternContentTest, PartnersThatAreMissingAreAdded) {
  EXPECT_EQ(readPatternContent("q q 1 w Q\n").text, "q q 1 w Q\nQ\n");
  EXPECT_EQ(readPatternContent("1 w Q Q\n").text, "q\nq\n1 w Q Q\n");
  EXPECT_EQ(readPatternContent("Q q\n").text, "q\nQ q\nQ\n");
}

TEST(PatternContentTest, ObjectsAreNamedWithTheirPlaces) {
  const PatternContent content = readPatternContent("q 2 0 0 2 0 0 cm /PSI3 Do Q /PA4 scn\n");
  ASSERT_EQ(content.objects.size(), 2U);
  EXPECT_EQ(content.objects.at(3), (Matrix{2, 0, 0, 2, 0, 0}));
  EXPECT_EQ(content.objects.at(4), Matrix());
}

TEST(PatternContentTest, NumbersOutOfRangeAreRefused) {
  EXPECT_THROW(readPatternContent("q 10000000000000000000 w Q\n"), PageError);
  EXPECT_THROW(readPatternContent("q Q 10000000000000000000 w\n"), PageError);
}

TEST(PatternContentTest, DataOfImagesAreNoNumbers) {
  const std::string image = "BI\n/W 24 /H 1 /BPC 8 /CS /G\nID\n111111111111111111111111\nEI\n";
  EXPECT_EQ(readPatternContent(image).text, image);
}

}  // namespace
}  // namespace quillpress::cli
