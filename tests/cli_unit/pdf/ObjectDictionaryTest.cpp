#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/pdf/ObjectDictionary.h"

namespace quillpress::cli {
namespace {

std::string value(QPDFObjectHandle dictionary, const std::string& key) {
  return dictionary.getKey(key).unparse();
}

TEST(ObjectDictionaryTest, ARecordOfAnImageIsReadAsItIs) {
  auto dictionary = streamDictionary("/Type /XObject /Width 3 /ColorSpace /DeviceRGB");
  EXPECT_EQ(value(dictionary, "/Width"), "3");
  EXPECT_EQ(value(dictionary, "/ColorSpace"), "/DeviceRGB");
}

TEST(ObjectDictionaryTest, ARecordOfAPatternIsReadAsItIs) {
  auto dictionary =
      streamDictionary("/PaintType 2 /TilingType 7 /XStep 0 /BBox [0 0 8] /Matrix [2 0 0 2 5 6]");
  EXPECT_EQ(value(dictionary, "/PaintType"), "2");
  EXPECT_EQ(value(dictionary, "/TilingType"), "7");
  EXPECT_EQ(value(dictionary, "/XStep"), "0");
  EXPECT_EQ(value(dictionary, "/BBox"), "[ 0 0 8 ]");
  EXPECT_EQ(value(dictionary, "/Matrix"), "[ 2 0 0 2 5 6 ]");
  EXPECT_FALSE(dictionary.hasKey("/YStep"));
}

TEST(ObjectDictionaryTest, WhatIsNoDictionaryIsBroken) {
  for (const char* const text : {"/Width (open", "]", "/Matrix [\n/XStep 8 /BBox [0 0 8 8] "}) {
    EXPECT_THROW(streamDictionary(text), BrokenDictionary) << text;
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

}  // namespace
}  // namespace quillpress::cli
