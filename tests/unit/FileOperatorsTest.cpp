#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>

#include "postscript/lib/operators/FileOperators.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

// The operands after a job that comes in these chunks.
std::string resultOfChunks(std::initializer_list<std::string_view> chunks) {
  Interpreter interpreter;
  for (const std::string_view chunk : chunks) run(interpreter, chunk);
  return operandsOf(interpreter);
}

constexpr const char* kReadAtEnd = "Progam attempting to read char when insufficient current file is loaded";

TEST(ReadTest, PushesTheByteAndTrue) {
  EXPECT_EQ(resultOf("currentfile read\nA"), "65 true");
}

TEST(ReadTest, BytesAreSigned) {
  EXPECT_EQ(resultOf("currentfile read \xc8"), "-56 true");
}

TEST(ReadTest, AZeroByteLooksLikeTheEnd) {
  EXPECT_EQ(resultOf(std::string_view("currentfile read \0", 18)), "false");
}

TEST(ReadTest, TakesWhateverFollows) {
  EXPECT_EQ(resultOf("currentfile read ("), "40 true");
  EXPECT_EQ(resultOf("currentfile read  "), "32 true");
  EXPECT_EQ(resultOf("currentfile read\r\n\n"), "10 true");
  EXPECT_EQ(resultOf("currentfile read(5 "), "40 true 5");
}

TEST(ReadTest, TheNextReadTakesTheNextByte) {
  EXPECT_EQ(resultOf("2 {currentfile read pop} repeat A 5 "), "65 32 5");
}

TEST(ReadTest, AtTheEndOfTheChunkThrows) {
  Interpreter interpreter;
  EXPECT_EQ(messageOf([&] { run(interpreter, "1 currentfile read "); }), kReadAtEnd);
  EXPECT_EQ(operandsOf(interpreter), "1");
}

TEST(ReadTest, GoesOnInTheNextChunkAfterAnotherReader) {
  EXPECT_EQ(resultOfChunks({"{currentfile 2 string readstring pop currentfile read} exec\na", "bC"}),
            "(ab) 67 true");
}

TEST(ReadlineTest, AnEmptyLineIsTrueWhileTheChunkHoldsMore) {
  EXPECT_EQ(resultOf("currentfile 9 string readline\n\nx"), "() true");
  EXPECT_EQ(resultOfChunks({"currentfile 9 string readline\n", "\nx"}), "() true");
}

TEST(ReadlineTest, AnEmptyLineAtTheEndOfTheChunkIsFalse) {
  EXPECT_EQ(resultOf("currentfile 9 string readline\n\n"), "() false");
  EXPECT_EQ(resultOfChunks({"currentfile 9 string readline\n", "\n", "x"}), "() false");
  EXPECT_EQ(resultOf("currentfile 9 string readline\n\r\n"), "() false");
}

TEST(ReadlineTest, ALineThatIsNotEmptyIsTrueAtTheEndOfTheChunk) {
  EXPECT_EQ(resultOf("currentfile 9 string readline\nabc\n"), "(abc) true");
}

TEST(ReadlineTest, ALineEndIsOneAlsoBetweenChunks) {
  EXPECT_EQ(resultOfChunks({"2 {currentfile 9 string readline pop} repeat\r", "\nabc\r", "\nxyz\r", "\n5 "}),
            "(abc) (xyz) 5");
}

TEST(ReadlineTest, TwoCarriageReturnsBetweenChunksAreTwoLineEnds) {
  EXPECT_EQ(resultOfChunks({"2 {currentfile 9 string readline pop} repeat\nabc\r", "\r/xyz 5 "}),
            "(abc) () xyz 5");
}

TEST(ReadlineTest, AnEmptyEndStringMakesAnEmptyLineTheEnd) {
  EXPECT_EQ(resultOf("/endString () def currentfile 9 string readline\n\nx"), "() false");
}

TEST(ReadlineTest, TheResultOfAnEmptyLineIsAStringOfItsOwn) {
  EXPECT_EQ(resultOf("/b (xyz) def currentfile b readline\n\npop 0 (long) putinterval b "), "(xyz)");
}

TEST(ReadstringTest, WaitsWithItsOperandsBackOnTheStack) {
  Interpreter interpreter;
  run(interpreter, "7 currentfile 10 string readstring\nabcd");
  ASSERT_EQ(interpreter.operandStack().count(), 3U);
  EXPECT_EQ(interpreter.operandStack().at(0)->printString(), "7");
  EXPECT_EQ(interpreter.operandStack().at(1)->typeCode, TypeCode::kFile);
  EXPECT_EQ(interpreter.operandStack().at(2)->typeCode, TypeCode::kString);
  ASSERT_EQ(interpreter.executionStack().count(), 1U);
  EXPECT_EQ(interpreter.executionStack().peek(0)->printString(), "readstring");
  run(interpreter, "efgh");
  run(interpreter, "ij");
  EXPECT_EQ(operandsOf(interpreter), "7 (abcdefghij) true");
}

TEST(ReadstringTest, AProcedureBelowGoesOnWhenTheDataIsThere) {
  Interpreter interpreter;
  run(interpreter, "/p {currentfile 4 string readstring pop 5} def p\nab");
  EXPECT_EQ(interpreter.executionStack().count(), 2U);
  run(interpreter, "cd6 ");
  EXPECT_EQ(operandsOf(interpreter), "(abcd) 5 6");
}

TEST(ReadstringTest, AnEmptyChunkChangesNothing) {
  EXPECT_EQ(resultOfChunks({"currentfile 2 string readstring\n", "", "a", "", "b"}), "(ab) true");
}

TEST(ReadstringTest, AFilledBufferWaitsForNothing) {
  EXPECT_EQ(resultOf("currentfile 2 string readstring\nab"), "(ab) true");
}

TEST(ReadstringTest, EveryByteValuePasses) {
  std::string data;
  for (int byte = 0; byte < 256; ++byte) data += static_cast<char>(byte);
  for (const std::size_t chunkSize : {std::size_t{1}, std::size_t{7}, std::size_t{256}}) {
    Interpreter interpreter;
    run(interpreter, "currentfile 256 string readstring ");
    for (std::size_t i = 0; i < data.size(); i += chunkSize) run(interpreter, data.substr(i, chunkSize));
    run(interpreter, " pop ");
    const auto* string = as<StringObject>(interpreter.operandStack().peek(0));
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(string->bytes(), data);
  }
}

TEST(ReadstringTest, AConverterMayBeClosedWhileItWaits) {
  Interpreter interpreter;
  run(interpreter, "{3 {currentfile 4 string readstring pop} repeat} stopped\nab");
  EXPECT_EQ(interpreter.operandStack().count(), 2U);
}

TEST(ReadhexstringTest, AHalfByteWaitsForTheNextChunk) {
  EXPECT_EQ(resultOfChunks({"currentfile 2 string readhexstring\n4", "1\n4", "", "2"}), "(AB) true");
}

TEST(ReadhexstringTest, EveryByteValuePassesInEitherCase) {
  std::string lower;
  std::string upper;
  for (int byte = 0; byte < 256; ++byte) {
    lower += "0123456789abcdef"[byte / 16];
    lower += "0123456789abcdef"[byte % 16];
    upper += "0123456789ABCDEF"[byte / 16];
    upper += "0123456789ABCDEF"[byte % 16];
  }
  for (const std::string& digits : {lower, upper}) {
    Interpreter interpreter;
    run(interpreter, "currentfile 256 string readhexstring\n" + digits + " pop ");
    const auto* string = as<StringObject>(interpreter.operandStack().peek(0));
    ASSERT_NE(string, nullptr);
    ASSERT_EQ(string->length(), 256U);
    for (int byte = 0; byte < 256; ++byte) {
      EXPECT_EQ(string->bytes()[static_cast<std::size_t>(byte)], static_cast<char>(byte));
    }
  }
}

TEST(ReadhexstringTest, NoByteButADigitCounts) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (std::string_view("0123456789abcdefABCDEF").find(c) != std::string_view::npos) continue;
    EXPECT_EQ(resultOf(std::string("currentfile 1 string readhexstring ") + c + "4" + c + "1" + " "),
              "(A) true")
        << byte;
  }
}

TEST(FilterTest, TheFileHoldsItsSourceAndTheFilterName) {
  Interpreter interpreter;
  run(interpreter, "(abc) /ASCIIHexDecode filter ");
  const auto* file = as<FileObject>(interpreter.operandStack().peek(0));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->data().kind, FileData::Kind::kFiltered);
  EXPECT_EQ(file->data().filterName, "ASCIIHexDecode");
  EXPECT_EQ(file->data().filterParameter, 2147483647);
  EXPECT_EQ(file->data().source->printString(), "(abc)");
}

TEST(FilterTest, TheCurrentFileIsOfItsOwnKind) {
  Interpreter interpreter;
  run(interpreter, "currentfile ");
  const auto* file = as<FileObject>(interpreter.operandStack().peek(0));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->isCurrentFile());
}

}  // namespace
}  // namespace quillpress
