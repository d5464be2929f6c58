#include "postscript/level3/streams/FlateFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

// "hello hello hello hello", compressed by Python's zlib.
const std::string kHello = "\x78\x9c\xcb\x48\xcd\xc9\xc9\x57\xc8\x40\x27\x01\x68\x03\x08\xb1";

Decoded flate(const std::string& data) {
  return decodeText(decoderOf<FlateDecoder>(), data);
}

TEST(FlateDecoderTest, DecodesUpToItsEnd) {
  EXPECT_EQ(flate(kHello + "zz"), ended("hello hello hello hello", "zz"));
}

TEST(FlateDecoderTest, DataThatIsCutEnds) {
  EXPECT_EQ(flate(kHello.substr(0, 6)).state, StreamState::kEnd);
}

TEST(FlateDecoderTest, AWrongHeaderIsAnError) {
  EXPECT_EQ(flate("aaaaaaaa").state, StreamState::kError);
}

TEST(FlateDecoderTest, AWrongSumDoesNotMatter) {
  std::string data = kHello;
  data.back() = 'x';
  EXPECT_EQ(flate(data + "zz"), ended("hello hello hello hello", "zz"));
}

TEST(FlateDecoderTest, ASmallPieceIsNotMadeToWaitForMore) {
  int calls = 0;
  const auto source = std::make_shared<PieceSource>([&calls]() -> std::optional<Bytes> {
    ++calls;
    return bytesOf(calls == 1 ? std::string_view(kHello).substr(0, 9) : std::string_view("\0", 1));
  });
  FlateDecoder decoder(source);
  EXPECT_EQ(decoder.get(), 'h');
  EXPECT_EQ(calls, 1);
}

TEST(FlateEncoderTest, EveryEffortIsDecodable) {
  const std::string data(3000, 'x');
  for (int effort = FlateEncoder::kDefaultEffort; effort <= 9; ++effort) {
    EXPECT_EQ(flate(encodeText(encoderOf<FlateEncoder>(effort), data)), ended(data)) << effort;
  }
}

TEST(FlateFilterTest, ReturnsWhatWasEncoded) {
  expectRoundTrips(encoderOf<FlateEncoder>(), decoderOf<FlateDecoder>());
}

TEST(FlateFilterTest, SurvivesDamage) {
  expectSurvivesDamage(
      decoderOf<FlateDecoder>(),
      encodeText(encoderOf<FlateEncoder>(), "When in the course of human events, " + kHello));
}

}  // namespace
}  // namespace quillpress::level3
