#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/content/ContentScanner.h"

namespace quillpress::cli {
namespace {

using Marks = std::vector<std::string>;

// The marks of `text` as they stand there.
Marks marksOf(std::string_view text) {
  Marks marks;
  ContentScanner scanner(text);
  for (ContentMark mark{}; scanner.next(text.size(), mark);) {
    marks.emplace_back(text.substr(mark.begin, mark.end - mark.begin));
  }
  return marks;
}

TEST(ContentScannerTest, SavesAndRestoresAreMarks) {
  EXPECT_EQ(marksOf("q 1 0 0 1 5 5 cm 0 0 m 1 1 l S Q\n"), (Marks{"q", "Q"}));
}

TEST(ContentScannerTest, ObjectsHaveTheirNumbers) {
  const std::string_view text = "/PSI12 Do /Pattern cs /PA3 scn";
  ContentScanner scanner(text);
  ContentMark mark{};
  ASSERT_TRUE(scanner.next(text.size(), mark));
  EXPECT_EQ(mark.kind, ContentMark::Kind::kObject);
  EXPECT_EQ(mark.number, 12U);
  ASSERT_TRUE(scanner.next(text.size(), mark));
  EXPECT_EQ(mark.number, 3U);
  EXPECT_FALSE(scanner.next(text.size(), mark));
}

TEST(ContentScannerTest, OtherNamesAndOperatorsAreNone) {
  EXPECT_EQ(marksOf("/Pattern cs /PAx scn /PSI Do /PSI1x Do /F1 gs /q B* qq BIx"), Marks{});
}

TEST(ContentScannerTest, OnlyWholeTokensCount) {
  EXPECT_EQ(marksOf("aq qb Q"), Marks{"Q"});
}

TEST(ContentScannerTest, AnInlineImageIsOneMarkWhateverItsDataLookLike) {
  const std::string image = "BI\n/W 2 /H 1 /BPC 8 /CS /G\nID\n Q\nEI";
  EXPECT_EQ(marksOf("q " + image + "\nQ "), (Marks{"q", image, "Q"}));
}

TEST(ContentScannerTest, ALimitEndsTheSearch) {
  const std::string_view text = "1 2 3 4 q";
  ContentScanner scanner(text);
  ContentMark mark{};
  EXPECT_FALSE(scanner.next(4, mark));
  EXPECT_TRUE(scanner.next(text.size(), mark));
  EXPECT_EQ(mark.begin, 8U);
}

}  // namespace
}  // namespace quillpress::cli
