#include "postscript/level3/streams/RunLengthFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

Decoded runs(const std::string& data) {
  return decodeText(decoderOf<RunLengthDecoder>(), data);
}

std::string encoded(const std::string& data, std::size_t recordSize = 0) {
  return encodeText(encoderOf<RunLengthEncoder>(recordSize), data);
}

TEST(RunLengthDecoderTest, DecodesLiteralsAndRepetitions) {
  EXPECT_EQ(runs("\x02"
                 "abc\xFEx\x80zz"),
            ended("abcxxx", "zz"));
}

TEST(RunLengthDecoderTest, TheLongestRepetitionIs128) {
  EXPECT_EQ(runs("\x81x\x80"), ended(std::string(128, 'x')));
}

TEST(RunLengthDecoderTest, NeedsNoMarkerAtTheEndOfItsSource) {
  EXPECT_EQ(runs("\xFEx"), ended("xxx"));
}

TEST(RunLengthDecoderTest, DeliversWhatThereIsOfARunThatIsCut) {
  EXPECT_EQ(runs("\x05"
                 "abc"),
            ended("abc"));
  EXPECT_EQ(runs("\xFE"), ended(""));
}

TEST(RunLengthEncoderTest, ThreeEqualBytesAreARunAmongLiterals) {
  EXPECT_EQ(encoded("abbc"),
            "\x03"
            "abbc\x80");
  EXPECT_EQ(encoded("abbbc"), std::string("\0a\xFE"
                                          "b\0c\x80",
                                          7));
}

TEST(RunLengthEncoderTest, TwoEqualBytesAreARunWhereNoLiteralsStand) {
  EXPECT_EQ(encoded("aabbccddd"),
            "\xFF"
            "a\xFF"
            "b\xFF"
            "c\xFE"
            "d\x80");
}

TEST(RunLengthEncoderTest, NoRunReachesOverTheEndOfARecord) {
  EXPECT_EQ(encoded("aaaaaaaaaa", 4),
            "\xFD"
            "a\xFD"
            "a\xFF"
            "a\x80");
  EXPECT_EQ(encoded("abcdefghij", 4),
            "\x03"
            "abcd\x03"
            "efgh\x01ij\x80");
}

TEST(RunLengthEncoderTest, OfNothingOnlyTheMarkerIsWritten) {
  EXPECT_EQ(encoded(""), "\x80");
}

TEST(RunLengthEncoderTest, AFlushWritesTheRunSoFar) {
  const auto target = std::make_shared<MemorySink>();
  RunLengthEncoder encoder(target, 0);
  encoder.write(bytesOf("abc"));
  encoder.flush();
  EXPECT_EQ(textOf(target->bytes()),
            "\x02"
            "abc");
}

TEST(RunLengthFilterTest, ReturnsWhatWasEncoded) {
  for (const std::size_t record : {0, 1, 7, 300}) {
    expectRoundTrips(encoderOf<RunLengthEncoder>(record), decoderOf<RunLengthDecoder>());
  }
}

TEST(RunLengthFilterTest, SurvivesDamage) {
  expectSurvivesDamage(decoderOf<RunLengthDecoder>(), encoded("aaaaaaabcdefggggggggggggggggghijklmmmmm"));
}

}  // namespace
}  // namespace quillpress::level3
