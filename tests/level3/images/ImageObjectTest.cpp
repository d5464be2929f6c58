#include <gtest/gtest.h>

#include <qpdf/QPDF.hh>

#include "postscript/level3/images/ImageObject.h"
#include "postscript/level3/images/ImageRows.h"
#include "postscript/level3/pdf/PdfDocument.h"
#include "tests/level3/pdf/MemoryOutput.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

class ImageObjectTest : public ::testing::Test {
 protected:
  ObjectNumber write(const ImageDescription& description, const std::string& data, Byte missing = 0) {
    ImageRows rows({inPieces(data, 1000)}, description.layout);
    return writeImage(
               document_.file(), description, [&] { return rows.next(); }, missing)
        .number;
  }

  // What another library reads from the file.
  QPDFObjectHandle read(ObjectNumber number) {
    if (!isFinished_) {
      PageParts page;
      page.mediaBox = {0, 0, 612, 792};
      page.resources = "<<>>";
      document_.addPage(page);
      document_.finish();
      qpdf_.processMemoryFile("test", memory_.bytes().data(), memory_.bytes().size());
      isFinished_ = true;
    }
    return qpdf_.getObjectByID(static_cast<int>(number), 0);
  }

  static std::string dataOf(QPDFObjectHandle image) {
    const auto data = image.getStreamData();
    return std::string(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
  }

  MemoryOutput memory_;
  PdfDocument document_{memory_};

 private:
  QPDF qpdf_;
  bool isFinished_ = false;
};

ImageDescription grayImage(int width, int height) {
  return {.layout = {.width = width, .height = height, .components = 1, .bits = 8},
          .colourSpace = "/DeviceGray"};
}

TEST_F(ImageObjectTest, AnImageHasItsSamplesAndShape) {
  QPDFObjectHandle image = read(write(grayImage(3, 2), "abcdef"));
  EXPECT_EQ(image.getDict().getKey("/Width").getIntValue(), 3);
  EXPECT_EQ(image.getDict().getKey("/Height").getIntValue(), 2);
  EXPECT_EQ(image.getDict().getKey("/ColorSpace").getName(), "/DeviceGray");
  EXPECT_EQ(image.getDict().getKey("/BitsPerComponent").getIntValue(), 8);
  EXPECT_FALSE(image.getDict().hasKey("/Decode"));
  EXPECT_EQ(dataOf(image), "abcdef");
}

TEST_F(ImageObjectTest, TwelveBitsAreWrittenAsSixteen) {
  ImageDescription description = grayImage(2, 1);
  description.layout.bits = 12;
  description.colourKey = {0, 4095};
  QPDFObjectHandle image = read(write(description, std::string("\x00\x0F\xFF", 3)));
  EXPECT_EQ(image.getDict().getKey("/BitsPerComponent").getIntValue(), 16);
  EXPECT_EQ(image.getDict().getKey("/Mask").getArrayItem(1).getIntValue(), 65535);
  EXPECT_EQ(dataOf(image), std::string("\x00\x00\xFF\xFF", 4));
}

TEST_F(ImageObjectTest, AStencilHasNoColourSpace) {
  ImageDescription description{.layout = {.width = 8, .height = 1, .components = 1, .bits = 1},
                               .isStencil = true,
                               .colourSpace = "",
                               .decode = {1, 0}};
  QPDFObjectHandle image = read(write(description, "\x5A"));
  EXPECT_TRUE(image.getDict().getKey("/ImageMask").getBoolValue());
  EXPECT_FALSE(image.getDict().hasKey("/ColorSpace"));
  EXPECT_EQ(image.getDict().getKey("/Decode").unparse(), "[ 1 0 ]");
}

TEST_F(ImageObjectTest, AShortImageEndsWithItsRows) {
  QPDFObjectHandle image = read(write(grayImage(2, 3), "abc"));
  EXPECT_EQ(image.getDict().getKey("/Height").getIntValue(), 1);
  EXPECT_EQ(dataOf(image), "ab");
}

TEST_F(ImageObjectTest, AnImageWithoutARowIsNotWritten) {
  EXPECT_EQ(write(grayImage(2, 3), "a"), 0U);
}

TEST_F(ImageObjectTest, RowsThatALongImageLacksAreFilled) {
  const std::string data = dataOf(read(write(grayImage(1000, 200), std::string(100'000, 'a'), 'x')));
  EXPECT_TRUE(data == std::string(100'000, 'a') + std::string(100'000, 'x'));
}

TEST_F(ImageObjectTest, AHeldImageIsWrittenInTheEnd) {
  const ImageDescription description = grayImage(3, 5);
  HeldImage held(description.layout);
  held.add(bytesOf("abc"));
  held.add(bytesOf("def"));
  QPDFObjectHandle image = read(held.write(document_.file(), description));
  EXPECT_EQ(image.getDict().getKey("/Height").getIntValue(), 2);
  EXPECT_EQ(dataOf(image), "abcdef");
}

TEST_F(ImageObjectTest, TheSameImageIsWrittenOnce) {
  const ObjectNumber first = write(grayImage(3, 2), "abcdef");
  EXPECT_EQ(write(grayImage(3, 2), "abcdef"), first);
  EXPECT_NE(write(grayImage(3, 2), "abcdeg"), first);
}

TEST_F(ImageObjectTest, ALargeImageGoesOutAsItComes) {
  std::string noise;
  std::mt19937 random(9);
  for (int i = 0; i < 1000 * 1000; ++i) noise += static_cast<char>(random());
  const ObjectNumber number = write(grayImage(1000, 1000), noise);
  EXPECT_GT(memory_.bytes().size(), 900000U);
  EXPECT_TRUE(dataOf(read(number)) == noise);
}

}  // namespace
}  // namespace quillpress::level3
