#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/pdf/ObjectDictionary.h"

namespace quillpress::cli {
namespace {

const std::string kPattern = "/PatternType 1 /PaintType 1 /TilingType 2 /BBox [0 0 8 9] /XStep 8 /YStep 9 ";

std::string value(QPDFObjectHandle dictionary, const std::string& key) {
  return dictionary.getKey(key).unparse();
}

TEST(ObjectDictionaryTest, ARecordOfAnImageIsReadAsItIs) {
  auto dictionary = imageDictionary("/Type /XObject /Width 3 /ColorSpace /DeviceRGB");
  EXPECT_EQ(value(dictionary, "/Width"), "3");
  EXPECT_EQ(value(dictionary, "/ColorSpace"), "/DeviceRGB");
}

TEST(ObjectDictionaryTest, WhatIsNoDictionaryIsBroken) {
  EXPECT_THROW(imageDictionary("/Width (open"), BrokenDictionary);
  EXPECT_THROW(imageDictionary("]"), BrokenDictionary);
}

TEST(ObjectDictionaryTest, ACompletePatternStays) {
  auto dictionary = patternDictionary(kPattern + "/Matrix [1 0 0 1 5 5]", Matrix());
  EXPECT_EQ(value(dictionary, "/Matrix"), "[ 1 0 0 1 5 5 ]");
  EXPECT_EQ(value(dictionary, "/BBox"), "[ 0 0 8 9 ]");
  EXPECT_EQ(value(dictionary, "/TilingType"), "2");
}

TEST(ObjectDictionaryTest, TheMatrixLeadsToThePage) {
  auto dictionary = patternDictionary(kPattern + "/Matrix [1 0 0 1 5 6]", {2, 0, 0, 2, 1, 1});
  EXPECT_EQ(value(dictionary, "/Matrix"), "[ 2 0 0 2 11 13 ]");
  EXPECT_EQ(value(patternDictionary(kPattern, Matrix()), "/Matrix"), "[ 1 0 0 1 0 0 ]");
}

TEST(ObjectDictionaryTest, AMatrixWithoutExtentIsClosedWithZeros) {
  auto dictionary = patternDictionary("/Matrix [\n" + std::string(kPattern), Matrix());
  EXPECT_EQ(value(dictionary, "/Matrix"), "[ 0 0 0 0 0 0 ]");
}

TEST(ObjectDictionaryTest, WhatIsMissingIsMadeUp) {
  auto dictionary = patternDictionary("/XStep 8 /YStep 0", Matrix());
  EXPECT_EQ(value(dictionary, "/BBox"), "[ 0 0 8 1 ]");
  EXPECT_EQ(dictionary.getKey("/YStep").getNumericValue(), 1);
  EXPECT_EQ(value(dictionary, "/PatternType"), "1");
  EXPECT_EQ(value(dictionary, "/PaintType"), "1");
  EXPECT_EQ(value(dictionary, "/TilingType"), "1");
}

TEST(ObjectDictionaryTest, ATilingTypeThatIsNoneIsTheFirst) {
  for (const char* const type : {"0", "4", "(x)", "1.5"}) {
    EXPECT_EQ(value(patternDictionary(std::string("/TilingType ") + type, Matrix()), "/TilingType"), "1")
        << type;
  }
}

TEST(ObjectDictionaryTest, NumbersOfARecordAreChecked) {
  EXPECT_NO_THROW(checkRecord("/Matrix [1 0 0 1 0 0] /Name /inf /BBox [0 0 999999999999999999 1]"));
  for (const char* const text :
       {"/Matrix [inf 0 0 1 0 0]", "/Matrix [-inf 0 0 1 0 0]", "/XStep nan", "/XStep -nan",
        "/XStep 1000000000000000000000", "/Matrix [1 0 0 infinity 0 0]"}) {
    EXPECT_THROW(checkRecord(text), PageError) << text;
  }
}

TEST(ObjectDictionaryTest, AMatrixThatGrowsTooLargeIsRefused) {
  EXPECT_THROW(patternDictionary(kPattern + "/Matrix [100000000000 0 0 1 0 0]", {1e11, 0, 0, 1, 0, 0}),
               PageError);
}

}  // namespace
}  // namespace quillpress::cli
