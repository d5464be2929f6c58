#include "postscript/level3/streams/PredictorFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

MakeDecoder decoderFor(const PredictorParameters& parameters) {
  return [parameters](SourcePointer source) { return withPredictor(std::move(source), parameters); };
}

MakeEncoder encoderFor(const PredictorParameters& parameters) {
  return [parameters](SinkPointer target) { return withPredictor(std::move(target), parameters); };
}

Decoded predicted(const std::string& data, const PredictorParameters& parameters) {
  return decodeText(decoderFor(parameters), data);
}

std::string differences(const std::string& data, const PredictorParameters& parameters) {
  return encodeText(encoderFor(parameters), data);
}

TEST(PredictorTest, NoneLeavesTheStreamsAsTheyAre) {
  const auto source = std::make_shared<MemorySource>(bytesOf("a"));
  EXPECT_EQ(withPredictor(source, {}), source);
  const auto sink = std::make_shared<MemorySink>();
  EXPECT_EQ(withPredictor(sink, {}), sink);
}

TEST(TiffPredictorTest, AddsTheLeftNeighbourWithinARow) {
  EXPECT_EQ(predicted("\x01\x01\x01\x05\x01\x01", {.predictor = 2, .columns = 3}),
            ended("\x01\x02\x03\x05\x06\x07"));
}

TEST(TiffPredictorTest, AddsEachComponentToItsOwn) {
  EXPECT_EQ(predicted("\x01\x0A\x01\x01", {.predictor = 2, .colors = 2, .columns = 2}),
            ended("\x01\x0A\x02\x0B"));
}

TEST(TiffPredictorTest, AddsSamplesOfFewBits) {
  // 3, 3 + 1, 4 + 15 (modulo 16), and four bits that fill up the row.
  EXPECT_EQ(predicted("\x31\xF5", {.predictor = 2, .bitsPerComponent = 4, .columns = 3}), ended("\x34\x35"));
  // Differences of one bit: 1 1 0 1 0 0 0 0 are 1 0 0 1 1 1 1 1.
  EXPECT_EQ(predicted("\xD0", {.predictor = 2, .bitsPerComponent = 1, .columns = 8}), ended("\x9F"));
}

TEST(TiffPredictorTest, CarriesIntoTheUpperByteOfSixteenBits) {
  EXPECT_EQ(
      predicted(std::string("\x00\xFF\x00\x01", 4), {.predictor = 2, .bitsPerComponent = 16, .columns = 2}),
      ended(std::string("\x00\xFF\x01\x00", 4)));
}

TEST(TiffPredictorTest, HalfASampleIsDeliveredAsItCame) {
  EXPECT_EQ(predicted("\x01\x02\x03", {.predictor = 2, .bitsPerComponent = 16, .columns = 2}),
            ended("\x01\x02\x03"));
}

TEST(PngPredictorTest, EachRowSaysItsFilter) {
  const PredictorParameters parameters{.predictor = 15, .columns = 3};
  EXPECT_EQ(predicted(std::string("\0\x01\x02\x03\x01\x01\x01\x01", 8), parameters),
            ended("\x01\x02\x03\x01\x02\x03"));
  EXPECT_EQ(predicted("\x02\x01\x02\x03\x02\x01\x01\x01", parameters), ended("\x01\x02\x03\x02\x03\x04"));
  EXPECT_EQ(predicted("\x01\x04\x04\x04\x03\x01\x01\x01", parameters), ended("\x04\x08\x0C\x03\x06\x0A"));
  EXPECT_EQ(predicted("\x02\x05\x06\x07\x04\x01\x01\x01", parameters), ended("\x05\x06\x07\x06\x07\x08"));
}

TEST(PngPredictorTest, TheLeftNeighbourIsAWholePixelAway) {
  EXPECT_EQ(predicted("\x01\x01\x02\x03\x01\x01\x01", {.predictor = 11, .colors = 3, .columns = 2}),
            ended("\x01\x02\x03\x02\x03\x04"));
}

TEST(PngPredictorTest, TheParametersDoNotBindTheRows) {
  EXPECT_EQ(predicted("\x01\x01\x01\x01", {.predictor = 12, .columns = 3}), ended("\x01\x02\x03"));
}

TEST(PngPredictorTest, AnUnknownFilterIsAnError) {
  EXPECT_EQ(predicted("\x05\x01\x01\x01", {.predictor = 15, .columns = 3}).state, StreamState::kError);
}

TEST(PngPredictorTest, ARowThatIsCutIsDelivered) {
  EXPECT_EQ(predicted("\x01\x01\x01", {.predictor = 15, .columns = 30}), ended("\x01\x02"));
}

TEST(PngPredictorTest, AWideRowTakesNoMemoryBeforeItComes) {
  EXPECT_EQ(predicted("\x01\x01\x01",
                      {.predictor = 15, .colors = 60, .bitsPerComponent = 16, .columns = 2147483647}),
            ended("\x01\x01"));
}

TEST(PngPredictorTest, WritesTheFilterOfItsNumber) {
  for (int number = 0; number < kPngFilterCount; ++number) {
    const std::string data = differences("abcdef", {.predictor = 10 + number, .columns = 3});
    EXPECT_EQ(data.size(), 8U);
    EXPECT_EQ(data[0], number);
    EXPECT_EQ(data[4], number);
  }
}

TEST(PngPredictorTest, ChoosesTheFilterWithTheSmallestDifferences) {
  const std::string data = differences("\x10\x20\x30\x10\x20\x30", {.predictor = 15, .columns = 3});
  EXPECT_EQ(data.substr(4), std::string("\x02\0\0\0", 4));
}

TEST(PredictorTest, ReturnsWhatWasEncoded) {
  std::mt19937 random(3);
  for (const int predictor : {2, 10, 11, 12, 13, 14, 15}) {
    for (const int bits : {1, 2, 4, 8, 16}) {
      for (const int colors : {1, 3, 4, 5}) {
        const PredictorParameters parameters{predictor, colors, bits, static_cast<int>(1 + random() % 30)};
        std::string data;
        for (std::size_t i = 0; i < 1000 + random() % 10; ++i) data += static_cast<char>(random());
        EXPECT_TRUE(predicted(differences(data, parameters), parameters) == ended(data))
            << predictor << ' ' << bits << ' ' << colors << ' ' << parameters.columns;
      }
    }
  }
}

}  // namespace
}  // namespace quillpress::level3
