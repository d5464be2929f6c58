#include <gtest/gtest.h>

#include <string>

#include "cli/base/Errors.h"
#include "cli/content/ObjectUses.h"

namespace quillpress::cli {
namespace {

TEST(ObjectUsesTest, EachObjectIsListedOnce) {
  EXPECT_EQ(checkedObjectUses("/PSI1 Do q /PA4 scn Q /PSI1 Do"), (ObjectUses{1, 4}));
  EXPECT_EQ(checkedObjectUses("1 w"), ObjectUses{});
  EXPECT_EQ(checkedObjectUses(""), ObjectUses{});
}

TEST(ObjectUsesTest, NumbersOutOfRangeAreRefused) {
  EXPECT_THROW(checkedObjectUses("q 10000000000000000000 w Q\n"), PageError);
  EXPECT_THROW(checkedObjectUses("q Q 10000000000000000000 w\n"), PageError);
}

TEST(ObjectUsesTest, DataOfImagesAreNeitherNumbersNorNames) {
  const std::string image = "BI\n/W 24 /H 1 /BPC 8 /CS /G\nID\n /PSI1 11111111111111111\nEI\n";
  EXPECT_EQ(checkedObjectUses(image + "/PSI2 Do"), ObjectUses{2});
}

}  // namespace
}  // namespace quillpress::cli
