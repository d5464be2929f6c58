#include <cstdlib>

#include "postscript/level3/streams/DctFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

// Soft slopes, which survive the coding nearly unchanged.
std::string slopes(const DctParameters& parameters) {
  std::string data;
  for (int y = 0; y < parameters.rows; ++y) {
    for (int x = 0; x < parameters.columns; ++x) {
      for (int c = 0; c < parameters.colors; ++c) data += static_cast<char>((3 * x + 2 * y + 40 * c) % 200);
    }
  }
  return data;
}

std::string encoded(const DctParameters& parameters) {
  return encodeText(encoderOf<DctEncoder>(parameters), slopes(parameters));
}

double meanDifference(const std::string& one, const std::string& other) {
  EXPECT_EQ(one.size(), other.size());
  double sum = 0;
  for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i) {
    sum +=
        std::abs(static_cast<int>(static_cast<Byte>(one[i])) - static_cast<int>(static_cast<Byte>(other[i])));
  }
  return sum / static_cast<double>(one.size());
}

DctParameters parametersFor(int colors, std::optional<bool> transform = std::nullopt) {
  return {.columns = 30, .rows = 20, .colors = colors, .colorTransform = transform, .qFactor = 0.1};
}

TEST(DctFilterTest, ReturnsNearlyWhatWasEncoded) {
  for (int colors = 1; colors <= 4; ++colors) {
    for (const std::optional<bool> transform :
         {std::optional<bool>(), std::optional(true), std::optional(false)}) {
      const DctParameters parameters = parametersFor(colors, transform);
      const Decoded decoded = decodeText(decoderOf<DctDecoder>(transform), encoded(parameters) + "rest");
      EXPECT_LT(meanDifference(decoded.text, slopes(parameters)), 3) << colors;
      EXPECT_EQ(decoded.state, StreamState::kEnd);
      EXPECT_EQ(decoded.unread, "rest");
    }
  }
}

TEST(DctFilterTest, SamplesTheComponentsAsToldTo) {
  DctParameters parameters = parametersFor(3);
  const std::size_t full = encoded(parameters).size();
  parameters.horizontalSamples = parameters.verticalSamples = {2, 1, 1, 1};
  const std::string small = encoded(parameters);
  EXPECT_LT(small.size(), full);
  EXPECT_LT(meanDifference(decodeText(decoderOf<DctDecoder>(), small).text, slopes(parameters)), 4);
}

TEST(DctFilterTest, AHigherFactorMakesLessData) {
  DctParameters parameters = parametersFor(1);
  const std::size_t fine = encoded(parameters).size();
  parameters.qFactor = 5;
  EXPECT_LT(encoded(parameters).size(), fine);
}

TEST(DctEncoderTest, UsesTheTablesGiven) {
  DctParameters parameters = parametersFor(1);
  parameters.qFactor = 1;
  parameters.quantTables.emplace_back();
  for (std::size_t i = 0; i < 64; ++i) parameters.quantTables[0][i] = static_cast<unsigned>(i + 1);
  const std::string data = encoded(parameters);
  std::string table(1, '\0');
  for (int i = 1; i <= 64; ++i) table += static_cast<char>(i);
  EXPECT_NE(data.find("\xFF\xDB" + std::string("\0\x43", 2) + table), std::string::npos);
  EXPECT_EQ(decodeText(decoderOf<DctDecoder>(), data).state, StreamState::kEnd);
}

TEST(DctEncoderTest, TooFewOrTooManyRowsAreAnError) {
  const DctParameters parameters{.columns = 2, .rows = 2, .colors = 1};
  DctEncoder few(std::make_shared<MemorySink>(), parameters);
  EXPECT_TRUE(few.write(bytesOf("abc")));
  EXPECT_FALSE(few.close());
  DctEncoder many(std::make_shared<MemorySink>(), parameters);
  EXPECT_FALSE(many.write(bytesOf("abcde")));
}

TEST(DctDecoderTest, KnowsItsFrameWithTheFirstByte) {
  DctDecoder decoder(inPieces(encoded(parametersFor(3)), 7));
  EXPECT_FALSE(decoder.frame());
  EXPECT_TRUE(decoder.refill());
  ASSERT_TRUE(decoder.frame());
  EXPECT_EQ(decoder.frame()->columns, 30);
  EXPECT_EQ(decoder.frame()->rows, 20);
  EXPECT_EQ(decoder.frame()->colors, 3);
}

TEST(DctDecoderTest, DataThatIsCutIsFilledUp) {
  const DctParameters parameters = parametersFor(1);
  const std::string data = encoded(parameters);
  const Decoded decoded = decodeText(decoderOf<DctDecoder>(), data.substr(0, data.size() - 20));
  EXPECT_EQ(decoded.text.size(), slopes(parameters).size());
  EXPECT_EQ(decoded.state, StreamState::kEnd);
}

TEST(DctDecoderTest, WhatIsNoImageIsAnError) {
  EXPECT_EQ(decodeText(decoderOf<DctDecoder>(), "no image at all").state, StreamState::kError);
  EXPECT_EQ(decodeText(decoderOf<DctDecoder>(), "").state, StreamState::kError);
}

TEST(DctDecoderTest, SkipsLongMarkers) {
  const DctParameters parameters = parametersFor(1);
  const std::string data = encoded(parameters);
  std::string withComment = data.substr(0, 2) + "\xFF\xFE\xFF\xFF" + std::string(65533, 'x') + data.substr(2);
  EXPECT_EQ(decodeText(decoderOf<DctDecoder>(), withComment).text,
            decodeText(decoderOf<DctDecoder>(), data).text);
}

TEST(DctDecoderTest, SurvivesDamage) {
  expectSurvivesDamage(decoderOf<DctDecoder>(), encoded(parametersFor(3)));
}

}  // namespace
}  // namespace quillpress::level3
