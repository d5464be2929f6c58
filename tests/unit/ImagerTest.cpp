#include <gtest/gtest.h>
#include <quillpress/converter.h>

#include <string>
#include <string_view>

#include "postscript/lib/pdf/ImageOperators.h"
#include "postscript/lib/pdf/ImagePlacement.h"
#include "tests/unit/ConverterFixture.h"

namespace quillpress {
namespace {

class ImagerTest : public ConverterFixture {
 protected:
  // The contents of all chunks of the given size.
  std::string contentInChunks(std::string_view job, std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < job.size(); i += size) text += content(job.substr(i, size));
    return text;
  }

  bool fails(std::string_view chunk) {
    return !converter_.convert(chunk.data(), static_cast<int>(chunk.size()));
  }
};

TEST_F(ImagerTest, FourThousandBytesAreInline) {
  const std::string samples(4000, 'x');
  EXPECT_EQ(content("4000 1 8 [1 0 0 1 0 0] (" + samples + ") image "),
            "q BI\n/W 4000 /H 1 /BPC 8 /CS /G \nID\n" + samples + "\nEI\nQ\n");
  EXPECT_EQ(objectCount(), 0U);
}

TEST_F(ImagerTest, OneByteMoreIsAnObject) {
  const std::string samples(4001, 'x');
  EXPECT_EQ(content("4001 1 8 [1 0 0 1 0 0] (" + samples + ") image "), "/PSI1 Do\n");
  ASSERT_EQ(objectCount(), 1U);
  EXPECT_STREQ(object(0).dictionary,
               "/Type /XObject /Subtype /Image /BitsPerComponent 8 /Width 4001 /Height 1 "
               "/ColorSpace /DeviceGray ");
  EXPECT_EQ(dataOf(object(0)), samples);
  EXPECT_EQ(object(0).compress, 1);
  EXPECT_EQ(object(0).kind, PDF_OBJECT_IMAGE);
  EXPECT_STREQ(object(0).name, "/PSI1");
}

TEST_F(ImagerTest, TheLengthAsHeldDecides) {
  EXPECT_EQ(content("1 1 8 [1 0 0 1 0 0] (" + std::string(5000, 'x') + ") image "), "/PSI1 Do\n");
  EXPECT_EQ(object(0).dataLength, 5000U);
}

TEST_F(ImagerTest, ObjectsNameTheirColourSpace) {
  const std::string samples(4001, 'x');
  content("1 1 8 [] (" + samples + "g) false 1 colorimage ");
  content("1 1 8 [] (" + samples + "r) false 3 colorimage ");
  content("1 1 4 [] (" + samples + "c) false 4 colorimage ");
  EXPECT_NE(std::string(object(0).dictionary).find("/ColorSpace /DeviceGray "), std::string::npos);
  EXPECT_NE(std::string(object(1).dictionary).find("/ColorSpace /DeviceRGB "), std::string::npos);
  EXPECT_STREQ(object(2).dictionary,
               "/Type /XObject /Subtype /Image /BitsPerComponent 4 /Width 1 /Height 1 "
               "/ColorSpace /DeviceCMYK ");
}

TEST_F(ImagerTest, EncodedObjectsNameTheirFilterAndAreNotCompressed) {
  const std::string digits(4000, 'a');
  EXPECT_EQ(content("2000 1 8 [] <" + digits + "> image "), "/PSI1 Do\n");
  EXPECT_STREQ(object(0).dictionary,
               "/Type /XObject /Subtype /Image /BitsPerComponent 8 /Width 2000 /Height 1 "
               "/ColorSpace /DeviceGray /Filter [ /ASCIIHexDecode] ");
  EXPECT_EQ(object(0).compress, 0);
  EXPECT_EQ(dataOf(object(0)), digits + ">");
}

TEST_F(ImagerTest, RepeatedDataMakesOneObject) {
  const std::string image = "5000 1 8 [] (" + std::string(5000, 'x') + ") image ";
  EXPECT_EQ(content(image + image), "/PSI1 Do\n/PSI1 Do\n");
  EXPECT_EQ(content(image), "/PSI1 Do\n");
  EXPECT_EQ(objectCount(), 1U);
}

TEST_F(ImagerTest, TheSameDataIsTheSameObjectWhateverElseDiffers) {
  const std::string samples(5000, 'x');
  content("5000 1 8 [] (" + samples + ") image ");
  EXPECT_EQ(content("2500 2 8 [] (" + samples + ") image "), "/PSI1 Do\n");
  EXPECT_EQ(objectCount(), 1U);
}

TEST_F(ImagerTest, OtherDataMakesAnotherObject) {
  EXPECT_EQ(content("5000 1 8 [] (" + std::string(5000, 'x') + ") image "), "/PSI1 Do\n");
  EXPECT_EQ(content("5000 1 8 [] (" + std::string(4999, 'x') + "y) image "), "/PSI2 Do\n");
  EXPECT_EQ(content("5000 1 8 [] (" + std::string(5000, 'x') + ") image "), "/PSI1 Do\n");
}

TEST_F(ImagerTest, ObjectsOutliveTheirPageAndTheirConverter) {
  const std::string image = "5000 1 8 [] (" + std::string(5000, 'x') + ") image ";
  content(image);
  converter_.startPage({});
  EXPECT_EQ(content(image), "/PSI1 Do\n");
  Postscript2Pdf other({});
  EXPECT_TRUE(other.convert(image.data(), static_cast<int>(image.size())));
  EXPECT_EQ(other.pageContent(), "/PSI1 Do\n");
}

TEST_F(ImagerTest, ImagesAndPatternsCountTogether) {
  const std::string pattern =
      "/p 9 dict def p /XStep 1 put p /YStep 1 put p /BBox [0 0 1 1] put p /PaintProc {pop} put "
      "p [1 0 0 1 0 0] makepattern setpattern ";
  EXPECT_EQ(content(pattern), "/Pattern cs\n/PA1 scn\n");
  EXPECT_EQ(content("5000 1 8 [] (" + std::string(5000, 'x') + ") image "), "/PSI2 Do\n");
  EXPECT_EQ(content(pattern), "/Pattern cs\n/PA3 scn\n");
}

TEST_F(ImagerTest, ImagesInAPatternAreInline) {
  const std::string samples(5000, 'x');
  const std::string job =
      "/p 9 dict def p /XStep 1 put p /YStep 1 put p /BBox [0 0 1 1] put p /PaintProc {pop 5000 1 8 [] (" +
      samples + ") image} put p [1 0 0 1 0 0] makepattern pop ";
  EXPECT_EQ(content(job), "");
  ASSERT_EQ(objectCount(), 1U);
  EXPECT_EQ(dataOf(object(0)),
            "q 1 0 0 1 0 0 cm\nq BI\n/W 5000 /H 1 /BPC 8 /CS /G \nID\n" + samples + "\nEI\nQ\nQ\n");
}

TEST_F(ImagerTest, MasksAreInlineAtAnySize) {
  const std::string samples(9000, 'x');
  EXPECT_EQ(content("8 8 true [] (" + samples + ") imagemask "),
            "BI\n/W 8 /H 8 /BPC 1 /ImageMask true /Decode [1 0] \nID\n" + samples + "\nEI\n");
  EXPECT_EQ(objectCount(), 0U);
}

TEST_F(ImagerTest, DataThatFollowsInTheJobIsTheSameInChunksOfAnySize) {
  std::string bytes;
  for (int i = 0; i < 6000; ++i) bytes.push_back(static_cast<char>(i * 7));
  const std::string job =
      "/s 100 string def 60 100 8 [] {currentfile s readstring pop} image\n" + bytes + "2 setlinewidth ";
  for (const std::size_t size : {1U, 2U, 3U, 7U, 99U, 100U, 101U, 1000U, 4096U, 100000U}) {
    PdfObjectList::ofProcess().clear();
    EXPECT_EQ(contentInChunks(job, size), "/PSI1 Do\n2 w ") << size;
    ASSERT_EQ(objectCount(), 1U);
    EXPECT_EQ(dataOf(object(0)), bytes) << size;
  }
}

TEST_F(ImagerTest, HexDataThatFollowsInTheJobIsTheSameInChunksOfAnySize) {
  std::string bytes;
  std::string digits;
  for (int i = 0; i < 5000; ++i) {
    const auto byte = static_cast<unsigned char>(i * 11);
    bytes.push_back(static_cast<char>(byte));
    digits.push_back("0123456789abcdef"[byte / 16]);
    digits.push_back("0123456789ABCDEF"[byte % 16]);
    if (i % 37 == 0) digits.push_back('\n');
  }
  const std::string job =
      "/s 50 string def 50 100 8 [] {currentfile s readhexstring pop} image\n" + digits + "2 setlinewidth ";
  for (const std::size_t size : {1U, 2U, 3U, 61U, 4096U, 100000U}) {
    PdfObjectList::ofProcess().clear();
    EXPECT_EQ(contentInChunks(job, size), "/PSI1 Do\n2 w ") << size;
    ASSERT_EQ(objectCount(), 1U);
    EXPECT_EQ(dataOf(object(0)), bytes) << size;
  }
}

TEST_F(ImagerTest, ThreeSourcesAreInterleavedFromTheLastToTheFirst) {
  const std::string job = "5000 1 8 [] {(" + std::string(5000, 'R') + ")} {(" + std::string(5000, 'G') +
                          ")} {(" + std::string(5000, 'B') + ")} true 3 colorimage ";
  EXPECT_EQ(content(job), "/PSI1 Do\n");
  EXPECT_EQ(object(0).dataLength, 15000U);
  EXPECT_EQ(dataOf(object(0)).substr(0, 6), "BGRBGR");
}

TEST_F(ImagerTest, AFailedImageDoesNotSpoilTheNextOne) {
  EXPECT_TRUE(fails("2 2 8 [] (abc) image "));
  EXPECT_EQ(content("1 1 8 [] (x) image "), "q BI\n/W 1 /H 1 /BPC 8 /CS /G \nID\nx\nEI\nQ\n");
}

TEST_F(ImagerTest, AFailureInTheSourceLetsTheImageGoOnWithTheNextChunk) {
  EXPECT_TRUE(fails("2 1 8 [] {(ab) 5 concat} image "));
  EXPECT_EQ(content(""), "q BI\n/W 2 /H 1 /BPC 8 /CS /G \nID\nab\nEI\nQ\n");
}

TEST_F(ImagerTest, ASourceOfEmptyStringsIsGivenUpAfterAHundredThousand) {
  const std::string counted =
      "/n 0 def 1 1 8 matrix {/n n 1 add def n %LIMIT% lt {()} {(a)} ifelse} image n ";
  const auto withLimit = [&](const std::string& limit) {
    std::string job = counted;
    return job.replace(job.find("%LIMIT%"), 7, limit);
  };
  EXPECT_EQ(content(withLimit("100000")), "q BI\n/W 1 /H 1 /BPC 8 /CS /G \nID\na\nEI\nQ\n");
  EXPECT_EQ(message(withLimit("100001")), "image data source has run dry");
  EXPECT_EQ(converter_.interpreter().dictionaries().userDictionary().lookup("n")->printString(), "100000");
}

TEST_F(ImagerTest, ThreeEmptyStringsAreOneStep) {
  EXPECT_EQ(message("1 1 8 matrix {()} {()} {()} true 3 colorimage "), "image data source has run dry");
}

TEST_F(ImagerTest, ASourceThatReadsTheJobMayYieldAnyNumberOfEmptyStrings) {
  const std::string job = "1 1 8 matrix {currentfile read pop 46 eq {(a)} {()} ifelse} image\n";
  EXPECT_EQ(content(job + std::string(250000, '-') + "."), "q BI\n/W 1 /H 1 /BPC 8 /CS /G \nID\na\nEI\nQ\n");
}

TEST_F(ImagerTest, AWaitingImageOutlivesThePageStart) {
  content("/s 2 string def 2 1 8 [] {currentfile s readstring pop} image\na");
  converter_.startPage({});
  EXPECT_EQ(content("b"), "q BI\n/W 2 /H 1 /BPC 8 /CS /G \nID\nab\nEI\nQ\n");
}

TEST_F(ImagerTest, AnUnknownSpaceMeansTheCurrentOne) {
  ImageSamples image;
  image.width = 1;
  image.height = 1;
  image.bitsPerComponent = 8;
  image.data = "abc";
  converter_.state().colourSpace = ColourSpace::kRgb;
  placeImage(converter_, image);
  EXPECT_EQ(converter_.pageContent(), "q BI\n/W 1 /H 1 /BPC 8 /CS /RGB \nID\nabc\nEI\nQ\n");
  converter_.state().colourSpace = ColourSpace::kHsb;
  EXPECT_THROW(placeImage(converter_, image), Ex);
}

TEST_F(ImagerTest, FilterTextListsEveryFilter) {
  EXPECT_EQ(imageFilterText({}), "");
  EXPECT_EQ(imageFilterText({"ASCIIHexDecode"}), "/Filter [ /ASCIIHexDecode] ");
  EXPECT_EQ(imageFilterText({"ASCII85Decode", "LZWDecode"}), "/Filter [ /ASCII85Decode /LZWDecode] ");
}

TEST_F(ImagerTest, AClearedListBeginsAgain) {
  const std::string image = "5000 1 8 [] (" + std::string(5000, 'x') + ") image ";
  content(image);
  PdfObjectList::ofProcess().clear();
  EXPECT_EQ(content(image), "/PSI1 Do\n");
  EXPECT_EQ(objectCount(), 1U);
}

}  // namespace
}  // namespace quillpress
