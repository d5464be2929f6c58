#include <gtest/gtest.h>

#include "postscript/lib/objects/StringObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

class StringObjectTest : public testing::Test {
 protected:
  VirtualMemoryObject area{"Local Memory"};
};

TEST_F(StringObjectTest, StoresBytesInside) {
  StringObject string(area, "abc");
  string.put(0, 'x');
  string.put(2, '\0');
  EXPECT_EQ(string.bytes(), std::string("xb\0", 3));
}

TEST_F(StringObjectTest, AByteJustPastTheEndLandsNowhere) {
  StringObject string(area, "abc");
  string.put(3, 'y');
  EXPECT_EQ(string.bytes(), "abc");
}

TEST_F(StringObjectTest, OtherIndexesOutsideAreOutOfRange) {
  StringObject string(area, "abc");
  EXPECT_EQ(messageOf([&] { string.put(4, 'y'); }), "String index out of range");
  EXPECT_EQ(messageOf([&] { string.put(-1, 'y'); }), "String index out of range");
  EXPECT_EQ(string.bytes(), "abc");
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
