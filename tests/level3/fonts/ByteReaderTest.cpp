#include <gtest/gtest.h>

#include "postscript/level3/fonts/ByteReader.h"

namespace quillpress::level3 {
namespace {

TEST(ByteReader, ReadsTheHighByteFirst) {
  ByteReader reader(std::string_view("\x01\x02\x03\xFF\xFE", 5));
  EXPECT_EQ(reader.u8(), 1);
  EXPECT_EQ(reader.u16(), 0x0203);
  EXPECT_EQ(reader.i16(), -2);
  EXPECT_TRUE(reader.atEnd());
}

TEST(ByteReader, RefusesWhatSticksOut) {
  ByteReader reader("abc", 1);
  EXPECT_THROW(reader.take(3), FontError);
  EXPECT_EQ(reader.take(2), "bc");
  EXPECT_THROW(partOf("abc", 2, 2), FontError);
}

TEST(ByteReader, HasNothingAtTheEndAndRefusesEvenThatBeyond) {
  EXPECT_EQ(partOf("abc", 3, 0), "");
  EXPECT_THROW(partOf("abc", 4, 0), FontError);
}

}  // namespace
}  // namespace quillpress::level3
