#include "postscript/level3/streams/LzwFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

// The manual's example: the bytes, and their nine codes of nine bits.
const std::string kExample = "-----A---B";
const std::string kExampleCodes = "\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01";

Decoded lzw(const std::string& data, const LzwParameters& parameters = {}) {
  return decodeText(decoderOf<LzwDecoder>(parameters), data);
}

TEST(LzwDecoderTest, DecodesUpToItsMarker) {
  EXPECT_EQ(lzw(kExampleCodes + "zz"), ended(kExample, "zz"));
}

TEST(LzwDecoderTest, NeedsNoMarkerAtTheEndOfItsSource) {
  EXPECT_EQ(lzw(kExampleCodes.substr(0, 8)), ended(kExample));
}

TEST(LzwDecoderTest, NeedsNoClearingAtTheStart) {
  EXPECT_EQ(lzw("\x18\x0C\x60\x20"), ended("01"));
}

TEST(LzwDecoderTest, ACodeThatIsNotInTheTableIsAnError) {
  const Decoded decoded = lzw("\x80\x0B\x7F\xC0");
  EXPECT_EQ(decoded.text, "-");
  EXPECT_EQ(decoded.state, StreamState::kError);
}

TEST(LzwDecoderTest, TheFirstCodeMustBeAUnit) {
  EXPECT_EQ(lzw("\x80\x40\xA0\x20").state, StreamState::kError);
}

TEST(LzwDecoderTest, ReadsCodesFromTheLowBit) {
  // Clear (16), 1, 2, 18 (= 1 2), end (17), in codes of five bits from the low end.
  EXPECT_EQ(lzw("\x30\x08\x19\x01", {.earlyChange = false, .unitLength = 4, .lowBitFirst = true}),
            ended("\x01\x02\x01\x02"));
}

TEST(LzwEncoderTest, EncodesTheExample) {
  EXPECT_EQ(encodeText(encoderOf<LzwEncoder>(LzwParameters{}), kExample), kExampleCodes);
}

TEST(LzwFilterTest, ReturnsWhatWasEncoded) {
  for (const bool early : {true, false}) {
    for (const bool lowBitFirst : {true, false}) {
      const LzwParameters parameters{.earlyChange = early, .lowBitFirst = lowBitFirst};
      expectRoundTrips(encoderOf<LzwEncoder>(parameters), decoderOf<LzwDecoder>(parameters));
    }
  }
}

TEST(LzwFilterTest, ReturnsUnitsOfFewerBits) {
  for (int length = 3; length <= 8; ++length) {
    std::string data;
    std::mt19937 random(7);
    for (int i = 0; i < 30000; ++i) data += static_cast<char>(random() % (1U << length));
    const LzwParameters parameters{.earlyChange = false, .unitLength = length, .lowBitFirst = true};
    const std::string encoded = encodeText(encoderOf<LzwEncoder>(parameters), data);
    EXPECT_TRUE(lzw(encoded + "zz", parameters) == ended(data, "zz")) << length;
  }
}

TEST(LzwFilterTest, SurvivesDamage) {
  for (const std::string& data : {kExample, std::string(20000, 'x')}) {
    expectSurvivesDamage(decoderOf<LzwDecoder>(LzwParameters{}),
                         encodeText(encoderOf<LzwEncoder>(LzwParameters{}), data));
  }
}

}  // namespace
}  // namespace quillpress::level3
