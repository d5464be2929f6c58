#include <gtest/gtest.h>

#include "postscript/level3/images/InlineImage.h"

namespace quillpress::level3 {
namespace {

ImageDescription stencil(int width, int height) {
  return {.layout = {.width = width, .height = height, .components = 1, .bits = 1},
          .isStencil = true,
          .colourSpace = ""};
}

ImageDescription coloured(std::string space, int components, int bits = 8) {
  return {.layout = {.width = 2, .height = 1, .components = components, .bits = bits},
          .colourSpace = std::move(space)};
}

TEST(InlineImageTest, AStencilIsItsRows) {
  EXPECT_EQ(inlineImage(stencil(9, 2), "abcd"), "BI/W 9/H 2/IM true ID abcd\nEI\n");
}

TEST(InlineImageTest, WhatAStencilPaintsMayBeTurnedRound) {
  ImageDescription description = stencil(8, 1);
  description.decode = {1, 0};
  EXPECT_EQ(inlineImage(description, "a"), "BI/W 8/H 1/IM true/D[1 0] ID a\nEI\n");
}

TEST(InlineImageTest, DeviceSpacesHaveShortNames) {
  EXPECT_EQ(inlineImage(coloured("/DeviceGray", 1), "ab"), "BI/W 2/H 1/CS/G/BPC 8 ID ab\nEI\n");
  EXPECT_EQ(inlineImage(coloured("/DeviceRGB", 3), "abcdef"), "BI/W 2/H 1/CS/RGB/BPC 8 ID abcdef\nEI\n");
  EXPECT_EQ(inlineImage(coloured("/DeviceCMYK", 4, 4), "abcd"), "BI/W 2/H 1/CS/CMYK/BPC 4 ID abcd\nEI\n");
}

TEST(InlineImageTest, InterpolationIsKept) {
  ImageDescription description = stencil(8, 1);
  description.interpolate = true;
  EXPECT_EQ(inlineImage(description, "a"), "BI/W 8/H 1/IM true/I true ID a\nEI\n");
}

TEST(InlineImageTest, CodedDataSaysHow) {
  EXPECT_EQ(inlineImage(stencil(8, 1), "a", "/F/CCF/DP<</K -1>>"),
            "BI/W 8/H 1/IM true/F/CCF/DP<</K -1>> ID a\nEI\n");
}

TEST(InlineImageTest, DataThatCouldEndItIsLeftToAnObject) {
  EXPECT_FALSE(inlineImage(stencil(8, 6), "ab EI "));
}

TEST(InlineImageTest, OnlySoManyBytesStandInContent) {
  EXPECT_TRUE(isWithin(stencil(80, 10).layout, 100));
  EXPECT_FALSE(isWithin(stencil(81, 10).layout, 100));
  EXPECT_FALSE(isWithin(stencil(1'000'000'000, 1'000'000'000).layout, 4096));
}

TEST(InlineImageTest, WhatNeedsAnObjectStaysOne) {
  EXPECT_FALSE(canBeInline(coloured("[/Indexed/DeviceRGB 1 3 0 R]", 1)));
  EXPECT_FALSE(canBeInline(coloured("/DeviceGray", 1, 12)));
  ImageDescription description = coloured("/DeviceGray", 1);
  description.colourKey = {0, 1};
  EXPECT_FALSE(canBeInline(description));
  description.colourKey.clear();
  description.mask = 7;
  EXPECT_FALSE(canBeInline(description));
}

}  // namespace
}  // namespace quillpress::level3
