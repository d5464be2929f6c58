#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "cli/base/Media.h"

namespace quillpress::cli {
namespace {

TEST(MediaTest, NamesAreKnownInAnyCase) {
  EXPECT_EQ(parseMedia("A4"), kA4);
  EXPECT_EQ(parseMedia("letter"), (Box{0, 0, 612, 792}));
  EXPECT_EQ(parseMedia("LEDGER"), (Box{0, 0, 1224, 792}));
}

TEST(MediaTest, MeasuresAreInPointsWithoutAUnit) {
  EXPECT_EQ(parseMedia("100x200.5"), (Box{0, 0, 100, 200.5}));
  EXPECT_EQ(parseMedia("100x200pt"), (Box{0, 0, 100, 200}));
}

TEST(MediaTest, UnitsAreConverted) {
  const auto millimetres = parseMedia("210x297mm");
  ASSERT_TRUE(millimetres);
  EXPECT_NEAR(millimetres->urx, 595.276, 0.001);
  EXPECT_NEAR(millimetres->ury, 841.890, 0.001);
  EXPECT_EQ(parseMedia("2.54x2.54cm"), (Box{0, 0, 72, 72}));
  EXPECT_EQ(parseMedia("8.5x11IN"), (Box{0, 0, 612, 792}));
}

TEST(MediaTest, WhatIsNoPageIsNone) {
  for (const std::string_view text : {"", "A99", "100", "100x", "x100", "axb", "0x0", "100x20000", "1x1xpt",
                                      "-5x9", "100x100km", "100 x 100"}) {
    EXPECT_EQ(parseMedia(text), std::nullopt) << text;
  }
}

TEST(MediaTest, EachNameOfTheHelpIsKnown) {
  std::string names = mediaNames();
  std::replace(names.begin(), names.end(), ',', ' ');
  std::istringstream words(names);
  int count = 0;
  for (std::string name; words >> name; ++count) EXPECT_TRUE(parseMedia(name)) << name;
  EXPECT_EQ(count, 16);
}

TEST(MediaTest, LinesOfNamesAreShort) {
  std::istringstream lines(mediaNames());
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 48U) << line;
}

}  // namespace
}  // namespace quillpress::cli
