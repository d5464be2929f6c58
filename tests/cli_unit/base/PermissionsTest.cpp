#include <gtest/gtest.h>

#include "cli/base/Permissions.h"

namespace quillpress::cli {
namespace {

constexpr Permissions kNothing{Permissions::Printing::kNone, false, false, false, false, false};

TEST(PermissionsTest, EverythingIsPermittedUnlessSaidOtherwise) {
  EXPECT_EQ(parsePermissions("all"), Permissions());
  EXPECT_EQ(parsePermissions("none"), kNothing);
}

TEST(PermissionsTest, OnlyWhatIsNamedIsPermitted) {
  Permissions expected = kNothing;
  expected.printing = Permissions::Printing::kCoarse;
  expected.fillingForms = true;
  EXPECT_EQ(parsePermissions("print-coarse,forms"), expected);
  EXPECT_EQ(parsePermissions("print,copy,modify,annotate,forms,assemble"), Permissions());
}

TEST(PermissionsTest, OtherWordsAreNone) {
  for (const char* const text : {"", "Print", "print,", "print copy", "all,x"}) {
    EXPECT_FALSE(parsePermissions(text)) << text;
  }
}

}  // namespace
}  // namespace quillpress::cli
