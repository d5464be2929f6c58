#include <gtest/gtest.h>

#include "cli/base/ExitCode.h"

namespace quillpress::cli {
namespace {

TEST(ExitCodeTest, TheGraverOfTwoCounts) {
  EXPECT_EQ(graver(ExitCode::kDone, ExitCode::kDone), ExitCode::kDone);
  EXPECT_EQ(graver(ExitCode::kDone, ExitCode::kCutOff), ExitCode::kCutOff);
  EXPECT_EQ(graver(ExitCode::kPartial, ExitCode::kCutOff), ExitCode::kPartial);
  EXPECT_EQ(graver(ExitCode::kPartial, ExitCode::kConversion), ExitCode::kConversion);
  EXPECT_EQ(graver(ExitCode::kInput, ExitCode::kConversion), ExitCode::kInput);
  EXPECT_EQ(graver(ExitCode::kInput, ExitCode::kOutput), ExitCode::kOutput);
}

}  // namespace
}  // namespace quillpress::cli
