#include <gtest/gtest.h>

#include "postscript/lib/base/Ex.h"

namespace quillpress {
namespace {

TEST(ExTest, KeepsFileLineAndMessage) {
  const Ex error("source/Parser.cpp", 57, "message");
  EXPECT_EQ(error.file(), "source/Parser.cpp");
  EXPECT_EQ(error.line(), 57);
  EXPECT_EQ(error.message(), "message");
}

TEST(ExTest, FormatsTheBareFileName) {
  EXPECT_EQ(Ex("Parser.cpp", 57, "m").formatted(), "[Parser.cpp:57] m\n");
  EXPECT_EQ(Ex("c:\\source\\lib\\Parser.cpp", 57, "m").formatted(), "[Parser.cpp:57] m\n");
  EXPECT_EQ(Ex("/source/lib/Parser.cpp", 57, "m").formatted(), "[Parser.cpp:57] m\n");
  EXPECT_EQ(Ex("source/lib\\Parser.cpp", 57, "m").formatted(), "[Parser.cpp:57] m\n");
}

TEST(ExTest, EndsInOneLineFeed) {
  EXPECT_EQ(Ex("a.cpp", 1, "m\n").formatted(), "[a.cpp:1] m\n");
  EXPECT_EQ(Ex("a.cpp", 1, "m\n\n").formatted(), "[a.cpp:1] m\n\n");
  EXPECT_EQ(Ex("a.cpp", 1, "").formatted(), "[a.cpp:1] \n");
}

TEST(ExTest, TheMessageIsNoFormat) {
  EXPECT_EQ(Ex("a.cpp", 1, "100 %s").formatted(), "[a.cpp:1] 100 %s\n");
}

TEST(ExTest, TheMacroNamesThePlaceOfTheThrow) {
  int line = 0;
  try {
    line = __LINE__ + 1;
    THROW_EX("message");
  } catch (const Ex& error) {
    EXPECT_EQ(error.formatted(), "[ExTest.cpp:" + std::to_string(line) + "] message\n");
    EXPECT_EQ(error.what(), error.formatted());
  }
}

}  // namespace
}  // namespace quillpress
