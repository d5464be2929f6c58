#include <gtest/gtest.h>
#include <quillpress/converter.h>

#include "cli/conversion/Converter.h"

namespace quillpress::cli {
namespace {

TEST(ConverterTest, PiecesBecomeContent) {
  Converter converter;
  EXPECT_EQ(converter.convert("2 setlinewidth "), "2 w ");
  EXPECT_EQ(converter.convert("3 setline"), "");
  EXPECT_EQ(converter.convert("width "), "3 w ");
}

TEST(ConverterTest, AFailureTellsItsReasonWithoutALineEnd) {
  Converter converter;
  EXPECT_EQ(converter.convert("wrong "), std::nullopt);
  const std::string text = converter.errorText();
  EXPECT_TRUE(text.starts_with("Exception:[NameObject.cpp:")) << text;
  EXPECT_TRUE(text.ends_with("NOTHING TO EXECUTE for wrong")) << text;
}

TEST(ConverterTest, FailingWithoutAWordIsLackOfMemory) {
  EXPECT_EQ(Converter().errorText(), "out of memory");
}

TEST(ConverterTest, APageBeginsWithAFreshGraphicsState) {
  Converter converter;
  converter.convert("5 setlinewidth ");
  converter.startPage();
  EXPECT_EQ(converter.convert("currentlinewidth 7 add setlinewidth "), "7 w ");
}

TEST(ConverterTest, ObjectsAreListed) {
  Converter converter;
  const std::size_t before = converter.objects().size();
  const std::string samples(12000, 'a');
  ASSERT_TRUE(
      converter.convert("/DeviceGray setcolorspace /row 100 string def 100 60 8 [1 0 0 1 0 0] "
                        "{currentfile row readhexstring pop} image\n" +
                        samples + "\n"))
      << converter.errorText();
  ASSERT_EQ(converter.objects().size(), before + 1);
  EXPECT_EQ(converter.objects().back()->kind, PDF_OBJECT_IMAGE);
  EXPECT_EQ(converter.objects().back()->dataLength, 6000U);
}

}  // namespace
}  // namespace quillpress::cli
