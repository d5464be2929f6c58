#include "postscript/level3/streams/Ascii85Filter.h"
#include "postscript/level3/streams/AsciiHexFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

Decoded hex(const std::string& data) {
  return decodeText(decoderOf<AsciiHexDecoder>(), data);
}
Decoded base85(const std::string& data) {
  return decodeText(decoderOf<Ascii85Decoder>(), data);
}

TEST(AsciiHexDecoderTest, DecodesUpToItsMarker) {
  EXPECT_EQ(hex("48656c6C6f>zz"), ended("Hello", "zz"));
}

TEST(AsciiHexDecoderTest, IgnoresWhiteSpace) {
  EXPECT_EQ(hex(std::string("4 8\t6\r5\n\f6\0c>", 13)), ended("Hel"));
}

TEST(AsciiHexDecoderTest, AnOddDigitIsFollowedByZero) {
  EXPECT_EQ(hex("48656c6C6>"), ended("Hell`"));
  EXPECT_EQ(hex("48656c6C6"), ended("Hell`"));
}

TEST(AsciiHexDecoderTest, NeedsNoMarkerAtTheEndOfItsSource) {
  EXPECT_EQ(hex("4865"), ended("He"));
}

TEST(AsciiHexDecoderTest, AnythingElseIsAnError) {
  const Decoded decoded = hex("48x65>");
  EXPECT_EQ(decoded.text, "H");
  EXPECT_EQ(decoded.state, StreamState::kError);
}

TEST(AsciiHexEncoderTest, BreaksLinesInFrontOfMoreData) {
  EXPECT_EQ(encodeText(encoderOf<AsciiHexEncoder>(), "Hello\xFF"), "48656C6C6FFF>");
  const std::string line(64, '0');
  EXPECT_EQ(encodeText(encoderOf<AsciiHexEncoder>(), std::string(32, '\0')), line + ">");
  EXPECT_EQ(encodeText(encoderOf<AsciiHexEncoder>(), std::string(33, '\0')), line + "\n00>");
}

TEST(AsciiHexFilterTest, ReturnsWhatWasEncoded) {
  expectRoundTrips(encoderOf<AsciiHexEncoder>(), decoderOf<AsciiHexDecoder>());
}

TEST(AsciiHexFilterTest, SurvivesDamage) {
  expectSurvivesDamage(decoderOf<AsciiHexDecoder>(), "48656c6C6f4865\n6c6C6f48656c6C6f>");
}

TEST(Ascii85DecoderTest, DecodesUpToItsMarker) {
  EXPECT_EQ(base85("87cURDZ~>zz"), ended("Hello", "zz"));
}

TEST(Ascii85DecoderTest, IgnoresWhiteSpaceAlsoInTheMarker) {
  EXPECT_EQ(base85("8 7\nc\tUR\rDZ~ >"), ended("Hello"));
}

TEST(Ascii85DecoderTest, AZStandsForFourZeros) {
  EXPECT_EQ(base85("z87cURz~>"), ended(std::string("\0\0\0\0Hell\0\0\0\0", 12)));
}

TEST(Ascii85DecoderTest, AZWithinAGroupIsAnError) {
  EXPECT_EQ(base85("87cUzR~>").state, StreamState::kError);
}

TEST(Ascii85DecoderTest, NeedsNoMarkerAtTheEndOfItsSource) {
  EXPECT_EQ(base85("87cURDZ"), ended("Hello"));
}

TEST(Ascii85DecoderTest, HalfAMarkerIsAnError) {
  EXPECT_EQ(base85("87cUR~").state, StreamState::kError);
  EXPECT_EQ(base85("87cUR~x").state, StreamState::kError);
}

TEST(Ascii85DecoderTest, ALastGroupOfOneDigitIsAnError) {
  const Decoded decoded = base85("87cURD~>");
  EXPECT_EQ(decoded.text, "Hell");
  EXPECT_EQ(decoded.state, StreamState::kError);
}

TEST(Ascii85DecoderTest, TheHighestGroupIsTheLastOneAllowed) {
  EXPECT_EQ(base85("s8W-!~>"), ended("\xFF\xFF\xFF\xFF"));
  EXPECT_EQ(base85("s8W-\"~>").state, StreamState::kError);
  EXPECT_EQ(base85("s8W*~>"), ended("\xFF\xFF\xFF"));
  EXPECT_EQ(base85("s8W-~>").state, StreamState::kError);
}

TEST(Ascii85DecoderTest, AnythingElseIsAnError) {
  EXPECT_EQ(base85("87cU{R~>").state, StreamState::kError);
  EXPECT_EQ(base85("<~87cUR~>").state, StreamState::kError);
}

TEST(Ascii85EncoderTest, ShortensZerosInWholeGroupsOnly) {
  EXPECT_EQ(encodeText(encoderOf<Ascii85Encoder>(), std::string(10, '\0')), "zz!!!~>");
  EXPECT_EQ(encodeText(encoderOf<Ascii85Encoder>(), "Hello"), "87cURDZ~>");
}

TEST(Ascii85EncoderTest, BreaksLinesBetweenGroups) {
  const std::string encoded = encodeText(encoderOf<Ascii85Encoder>(), std::string(64, 'a'));
  EXPECT_EQ(encoded.find('\n'), 75U);
  EXPECT_EQ(encoded.size(), 75U + 1 + 5 + 2);
}

TEST(Ascii85FilterTest, ReturnsWhatWasEncoded) {
  expectRoundTrips(encoderOf<Ascii85Encoder>(), decoderOf<Ascii85Decoder>());
}

TEST(Ascii85FilterTest, SurvivesDamage) {
  expectSurvivesDamage(decoderOf<Ascii85Decoder>(), "87cURDZ87cURDZ87cU\nRDZ87zcURDZ~>");
}

}  // namespace
}  // namespace quillpress::level3
