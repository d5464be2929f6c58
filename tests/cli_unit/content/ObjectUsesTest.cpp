#include <gtest/gtest.h>

#include "cli/content/ObjectUses.h"

namespace quillpress::cli {
namespace {

ObjectUses usesOf(std::string_view text) {
  ObjectUseTracker tracker;
  ContentScanner scanner(text);
  for (ContentMark mark{}; scanner.next(text.size(), mark);) tracker.take(mark, text);
  return tracker.uses();
}

TEST(ObjectUsesTest, EachObjectIsListedOnce) {
  EXPECT_EQ(usesOf("/PSI1 Do /PSI2 Do /PSI1 Do").size(), 2U);
  EXPECT_TRUE(usesOf("1 w").empty());
}

TEST(ObjectUsesTest, TheMatrixOfTheFirstUseCounts) {
  const ObjectUses uses = usesOf("q 2 0 0 2 0 0 cm 1 0 0 1 5 5 cm /PA1 scn Q /PA1 scn");
  EXPECT_EQ(uses.at(1), (Matrix{2, 0, 0, 2, 10, 10}));
}

TEST(ObjectUsesTest, RestoreBringsTheMatrixBack) {
  EXPECT_EQ(usesOf("q 2 0 0 2 0 0 cm Q /PA1 scn").at(1), Matrix());
}

}  // namespace
}  // namespace quillpress::cli
