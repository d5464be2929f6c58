#include <gtest/gtest.h>

#include "postscript/level3/graphics/ImageStrips.h"
#include "tests/level3/pdf/MemoryOutput.h"

namespace quillpress::level3 {
namespace {

class ImageStripsTest : public ::testing::Test {
 protected:
  static ImageStrip stripAt(double y, double height = 2) {
    ImageStrip strip;
    strip.description = {.layout = {.width = 4, .height = 1, .components = 1, .bits = 8},
                         .colourSpace = "/DeviceGray"};
    strip.place = {40, 0, 0, height, 10, y};
    return strip;
  }
  void add(const ImageStrip& strip, std::string_view row = "abcd") {
    strips_.add(content_, strip, bytesOf(row));
  }
  void fill() {
    Path path;
    path.appendRectangle({0, 0, 1, 1});
    content_.fill(path, FillRule::kNonzero, Paint::gray(0), nullptr, {});
  }
  std::string finished() {
    content_.finish();
    return content_.text();
  }

  MemoryOutput memory_;
  PdfFile file_{memory_};
  ContentWriter content_{file_, {Matrix(), {0, 0, 1000, 1000}, true}};
  ImageStrips strips_{file_};
};

TEST_F(ImageStripsTest, OneStripIsAnImage) {
  add(stripAt(100));
  EXPECT_EQ(finished(), "q\n40 0 0 2 10 100 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, NothingIsWrittenWhileAPictureMayGrow) {
  add(stripAt(100));
  EXPECT_EQ(content_.text(), "");
  EXPECT_FALSE(content_.isEmpty());
  EXPECT_EQ(file_.objectCount(), 0U);
}

TEST_F(ImageStripsTest, StripsDownwardsAreOneImage) {
  for (const double y : {100, 98, 96}) add(stripAt(y));
  EXPECT_EQ(finished(), "q\n40 0 0 6 10 96 cm\n/X1 Do\nQ\n");
  EXPECT_EQ(file_.objectCount(), 1U);
}

TEST_F(ImageStripsTest, StripsUpwardsAreOneImageTurnedOver) {
  for (const double y : {100, 102, 104}) add(stripAt(y));
  EXPECT_EQ(finished(), "q\n40 0 0 -6 10 106 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, WhatTurnsRoundIsAnotherImage) {
  for (const double y : {100, 102, 100}) add(stripAt(y));
  EXPECT_EQ(finished(), "q\n40 0 0 -4 10 104 cm\n/X1 Do\nQ\nq\n40 0 0 2 10 100 cm\n/X2 Do\nQ\n");
}

TEST_F(ImageStripsTest, PlacesMayBeOffByWhatNobodySees) {
  for (const double y : {100.0, 98.004, 95.997}) add(stripAt(y));
  EXPECT_EQ(finished(), "q\n40 0 0 6 10 96 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, GapsStay) {
  for (const double y : {100.0, 97.9}) add(stripAt(y));
  EXPECT_EQ(finished(), "q\n40 0 0 2 10 100 cm\n/X1 Do\nQ\nq\n40 0 0 2 10 97.9 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, StripsOfAnotherHeightStayApart) {
  add(stripAt(100));
  add(stripAt(97, 3));
  EXPECT_EQ(finished(), "q\n40 0 0 2 10 100 cm\n/X1 Do\nQ\nq\n40 0 0 3 10 97 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, OtherColoursStayApart) {
  add(stripAt(100));
  ImageStrip other = stripAt(98);
  other.description.decode = {1, 0};
  add(other);
  EXPECT_EQ(finished(), "q\n40 0 0 2 10 100 cm\n/X1 Do\nQ\nq\n40 0 0 2 10 98 cm\n/X2 Do\nQ\n");
}

TEST_F(ImageStripsTest, PaintingBetweenEndsThePicture) {
  add(stripAt(100));
  fill();
  add(stripAt(98));
  EXPECT_EQ(finished(), "q\n40 0 0 2 10 100 cm\n/X1 Do\nQ\n0 0 1 1 re\nf\nq\n40 0 0 2 10 98 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, MasksAreJoinedInOneColour) {
  for (const double y : {100, 98, 96}) {
    ImageStrip strip = stripAt(y);
    strip.description = {.layout = {.width = 32, .height = 1, .components = 1, .bits = 1},
                         .isStencil = true,
                         .colourSpace = ""};
    strip.paint = Paint::gray(y < 97 ? 0.5 : 0);
    add(strip);
  }
  EXPECT_EQ(finished(), "q\n40 0 0 4 10 98 cm\n/X1 Do\nQ\n.5 g\nq\n40 0 0 2 10 96 cm\n/X2 Do\nQ\n");
}

TEST_F(ImageStripsTest, AnotherClipBeginsAnotherImage) {
  Path path;
  path.appendRectangle({0, 0, 20, 1000});
  add(stripAt(100));
  ImageStrip clipped = stripAt(98);
  clipped.clip = Clip::within(nullptr, path, FillRule::kNonzero);
  add(clipped);
  EXPECT_EQ(finished(),
            "q\n40 0 0 2 10 100 cm\n/X1 Do\nQ\nq\n0 0 20 1000 re\nW n\nq\n40 0 0 2 10 98 cm\n/X1 Do\nQ\nQ\n");
}

TEST_F(ImageStripsTest, APictureOnAnotherPageIsAnother) {
  add(stripAt(100));
  content_.finish();
  content_.reset({Matrix(), {0, 0, 1000, 1000}, true});
  add(stripAt(98));
  EXPECT_EQ(finished(), "q\n40 0 0 2 10 98 cm\n/X1 Do\nQ\n");
}

TEST_F(ImageStripsTest, AHugePictureIsPaintedInParts) {
  ImageStrip strip = stripAt(0);
  strip.description.layout.width = 8 * 1024 * 1024;
  const std::string row(8UL * 1024 * 1024, 'x');
  for (int i = 0; i < 5; ++i) {
    strip.place.ty = 100 - 2 * i;
    add(strip, row);
  }
  EXPECT_EQ(finished(), "q\n40 0 0 8 10 94 cm\n/X1 Do\nQ\nq\n40 0 0 2 10 92 cm\n/X2 Do\nQ\n");
}

}  // namespace
}  // namespace quillpress::level3
