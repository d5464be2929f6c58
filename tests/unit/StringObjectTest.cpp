#include <gtest/gtest.h>

#include "postscript/lib/objects/StringObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

class StringObjectTest : public testing::Test {
 protected:
  VirtualMemoryObject area{"Local Memory"};
};

TEST_F(StringObjectTest, IsMadeOfACountedRun) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(StringObject(area, bytes.data(), 3).bytes(), bytes);
  EXPECT_EQ(StringObject(area, bytes.data(), 2).length(), 2U);
}

TEST_F(StringObjectTest, ANullPointerOrNoLengthGivesAnEmptyString) {
  EXPECT_EQ(StringObject(area, nullptr, 5).length(), 0U);
  EXPECT_EQ(StringObject(area, "abc", 0).length(), 0U);
  EXPECT_EQ(StringObject(area, "abc", -1).length(), 0U);
}

TEST_F(StringObjectTest, TheFirstByteOfAnEmptyStringIsOutOfRange) {
  StringObject string(area, "abc", 0);
  EXPECT_EQ(messageOf([&] { string.put(0, 'x'); }), "String index out of range");
}

TEST_F(StringObjectTest, StoresBytesInsideOnly) {
  StringObject string(area, "abc");
  string.put(0, 'x');
  string.put(2, '\0');
  EXPECT_EQ(string.bytes(), std::string("xb\0", 3));
  EXPECT_EQ(messageOf([&] { string.put(3, 'y'); }), "String index out of range");
  EXPECT_EQ(messageOf([&] { string.put(-1, 'y'); }), "String index out of range");
  EXPECT_EQ(string.bytes(), std::string("xb\0", 3));
}

TEST_F(StringObjectTest, TextsStopAtTheFirstZeroByteButTheDescriptionHoldsAll) {
  const StringObject string(area, std::string("a\0b", 3));
  EXPECT_EQ(string.cvsString(), "a");
  EXPECT_EQ(string.printString(), "(a)");
  EXPECT_EQ(string.describe(), "ps_string " + std::string("a\0b", 3));
}

TEST_F(StringObjectTest, HandlesShareTheBytes) {
  const auto string = make<StringObject>(area, "abc");
  const Ref<PostscriptObject> handle = string->clone(0);
  string->put(0, 'x');
  EXPECT_EQ(handle->printString(), "(xbc)");
  EXPECT_EQ(area.payloadCount(), 1U);
}

TEST_F(StringObjectTest, AnEncodedStringHoldsItsTextAndShowsItsBytes) {
  StringObject string(area, "48 65>");
  string.data().addDecodeFilter("ASCIIHexDecode");
  EXPECT_EQ(string.data().asHeld(), "48 65>");
  EXPECT_EQ(string.bytes(), "He");
  EXPECT_EQ(string.length(), 2U);
  EXPECT_EQ(string.data().asHeld(), "48 65>");
  EXPECT_EQ(string.data().decodeFilters(), std::vector<std::string>{"ASCIIHexDecode"});
}

TEST_F(StringObjectTest, WritingMakesAnEncodedStringPlain) {
  StringObject string(area, "48 65>");
  string.data().addDecodeFilter("ASCIIHexDecode");
  string.put(1, 'i');
  EXPECT_EQ(string.bytes(), "Hi");
  EXPECT_EQ(string.data().asHeld(), "Hi");
  EXPECT_TRUE(string.data().decodeFilters().empty());
}

TEST_F(StringObjectTest, SeveralFiltersApplyInTheirOrder) {
  StringObject string(area, "34 38 36 39>");
  string.data().addDecodeFilter("ASCIIHexDecode");
  string.data().addDecodeFilter("ASCIIHexDecode");
  EXPECT_EQ(string.bytes(), "Hi");
}

}  // namespace
}  // namespace quillpress
