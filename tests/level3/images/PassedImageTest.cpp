#include <gtest/gtest.h>

#include "postscript/level3/images/PassedImage.h"
#include "postscript/level3/pdf/PdfDocument.h"
#include "tests/level3/pdf/MemoryOutput.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

class PassedImageTest : public ::testing::Test {
 protected:
  static std::string photograph(int rows) {
    const DctParameters parameters{.columns = 30, .rows = rows, .colors = 3};
    std::string samples;
    std::mt19937 random(4);
    for (int i = 0; i < 30 * rows * 3; ++i) samples += static_cast<char>(random());
    return encodeText(encoderOf<DctEncoder>(parameters), samples);
  }

  static ImageDescription colourImage() {
    return {.layout = {.width = 30, .height = 20, .components = 3, .bits = 8}, .colourSpace = "/DeviceRGB"};
  }

  static ImageDescription faxImage(int height) {
    return {.layout = {.width = 20, .height = height, .components = 1, .bits = 1},
            .colourSpace = "/DeviceGray"};
  }

  // Six rows of Group 4.
  static std::string fax() {
    return {"\x3F\x2F\x93\x54\x3C\x64\x40\x6E\x4D\x59\xB6\x6D\x80\x08\x00\x80", 16};
  }

  static std::string withMore(const std::string& data) { return data + "and more"; }

  [[nodiscard]] bool holds(std::string_view bytes) const {
    return memory_.bytes().find(bytes) != std::string::npos;
  }

  MemoryOutput memory_;
  PdfFile file_{memory_};
};

TEST_F(PassedImageTest, PhotographsGoIntoTheFileByteForByte) {
  const std::string data = photograph(20);
  for (const std::size_t size : {std::size_t{1}, std::size_t{100}, std::size_t{100'000}}) {
    const SourcePointer source = inPieces(withMore(data), size);
    DctDecoder decoder(source);
    const WrittenImage image = passJpeg(file_, colourImage(), decoder);
    EXPECT_NE(image.number, 0U);
    EXPECT_EQ(image.height, 20);
    EXPECT_TRUE(holds(data));
    EXPECT_TRUE(holds("/Filter/DCTDecode"));
    EXPECT_TRUE(decoder.isClosed());
    EXPECT_EQ(source->position(), data.size()) << "in pieces of " << size;
  }
}

TEST_F(PassedImageTest, APhotographOfAnotherSizeIsDecoded) {
  const std::string data = photograph(24);
  const SourcePointer source = inPieces(withMore(data), 100);
  DctDecoder decoder(source);
  EXPECT_EQ(passJpeg(file_, colourImage(), decoder).height, 20);
  EXPECT_FALSE(holds(data));
  EXPECT_FALSE(holds("/Filter/DCTDecode"));
  EXPECT_EQ(source->position(), data.size());
}

TEST_F(PassedImageTest, WhatTheColoursMeanIsSaidWhereTheDataDoesNot) {
  std::string data = photograph(20);
  // Nobody knows this maker.
  data.replace(data.find("Adobe"), 5, "Other");
  DctDecoder decoder(inPieces(data, 100), false);
  passJpeg(file_, colourImage(), decoder);
  EXPECT_TRUE(holds("/DecodeParms<</ColorTransform 0>>"));
}

TEST_F(PassedImageTest, FaxDataGoesIntoTheFileByteForByte) {
  const CcittParameters parameters{.k = -1, .columns = 20};
  const SourcePointer source = inPieces(withMore(fax()), 3);
  CcittDecoder decoder(source, parameters);
  const WrittenImage image = passFax(file_, faxImage(6), decoder, 0);
  EXPECT_EQ(image.height, 6);
  EXPECT_TRUE(holds(fax()));
  EXPECT_TRUE(holds("/K -1"));
  EXPECT_EQ(source->position(), fax().size());
}

TEST_F(PassedImageTest, ShortFaxDataMakesAShortImage) {
  const CcittParameters parameters{.k = -1, .columns = 20};
  CcittDecoder decoder(inPieces(fax(), 100), parameters);
  EXPECT_EQ(passFax(file_, faxImage(9), decoder, 0).height, 6);
  EXPECT_TRUE(holds("/Rows 6"));
}

TEST_F(PassedImageTest, AFewBytesOfFaxDataStayInTheContent) {
  const CcittParameters parameters{.k = -1, .columns = 20};
  CcittDecoder decoder(inPieces(fax(), 100), parameters);
  const WrittenImage image = passFax(file_, faxImage(6), decoder, fax().size());
  EXPECT_EQ(image.number, 0U);
  EXPECT_EQ(image.height, 6);
  const std::string text =
      "/F/CCF/DP<</K -1/Columns 20/Rows 6>> ID " + fax() + std::string(4, '\0') + "\nEI\n";
  EXPECT_NE(image.inlined.find(text), std::string::npos);
  CcittDecoder again(inPieces(fax(), 100), parameters);
  EXPECT_NE(passFax(file_, faxImage(6), again, fax().size() - 1).number, 0U);
}

TEST_F(PassedImageTest, FaxDataWithoutAMarkStaysInTheContentWhereNoneIsExpected) {
  const std::string data = fax().substr(0, fax().size() - 4);
  CcittDecoder unmarked(inPieces(data, 100), {.k = -1, .columns = 20, .endOfBlock = false});
  EXPECT_NE(passFax(file_, faxImage(5), unmarked, 100).inlined.find("/EndOfBlock false"), std::string::npos);
  CcittDecoder cut(inPieces(data, 100), {.k = -1, .columns = 20});
  EXPECT_NE(passFax(file_, faxImage(5), cut, 100).number, 0U);
}

TEST_F(PassedImageTest, FaxDataOfAnotherWidthIsDecoded) {
  EXPECT_TRUE(canPassFax(faxImage(6), {.k = -1, .columns = 20}));
  EXPECT_FALSE(canPassFax(faxImage(6), {.k = -1, .columns = 24}));
  EXPECT_FALSE(canPassFax(faxImage(6), {.k = 0, .columns = 20, .damagedRowsBeforeError = 3}));
}

}  // namespace
}  // namespace quillpress::level3
