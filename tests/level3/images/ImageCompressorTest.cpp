#include <gtest/gtest.h>

#include <string>

#include "postscript/level3/images/ImageCompressor.h"
#include "postscript/level3/streams/FlateFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

struct Compressed {
  int predictor = 0;
  int begins = 0;
  std::shared_ptr<MemorySink> data = std::make_shared<MemorySink>();
};

Compressed compress(const ImageLayout& layout, const std::string& samples, bool mayUseThread = false) {
  Compressed result;
  const auto begin = [&result](const PredictorParameters& predictor) -> SinkPointer {
    result.predictor = predictor.predictor;
    ++result.begins;
    return result.data;
  };
  ImageCompressor compressor(layout, begin, mayUseThread);
  for (std::size_t at = 0; at < samples.size(); at += layout.rowBytes()) {
    EXPECT_TRUE(compressor.add(bytesOf(std::string_view(samples).substr(at, layout.rowBytes()))));
  }
  EXPECT_TRUE(compressor.finish());
  return result;
}

std::string decompressed(const Compressed& compressed, const ImageLayout& layout) {
  const auto source = std::make_shared<MemorySource>(Bytes(compressed.data->bytes()));
  return readAll(
      *withPredictor(std::make_shared<FlateDecoder>(source), layout.predictor(compressed.predictor)));
}

TEST(ImageCompressorTest, APredictorIsUsedForSlopes) {
  const ImageLayout layout{.width = 200, .height = 200, .components = 3, .bits = 8};
  std::string samples;
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 200; ++x) {
      for (const int value : {x + y, 2 * x - y, x * x / 200 + y}) samples += static_cast<char>(value);
    }
  }
  const Compressed result = compress(layout, samples);
  EXPECT_EQ(result.predictor, 15);
  EXPECT_EQ(result.begins, 1);
  EXPECT_TRUE(decompressed(result, layout) == samples);
}

TEST(ImageCompressorTest, AThreadChangesNothing) {
  const ImageLayout layout{.width = 1000, .height = 600, .components = 1, .bits = 8};
  std::string plain;
  std::string slopes;
  for (int y = 0; y < 600; ++y) {
    for (int x = 0; x < 1000; ++x) {
      plain += static_cast<char>((x / 50 + y / 70) % 2);
      slopes += static_cast<char>(x * y / 500 + x / 3);
    }
  }
  for (const std::string& samples : {plain, slopes}) {
    const Compressed expected = compress(layout, samples);
    const Compressed result = compress(layout, samples, true);
    EXPECT_EQ(result.predictor, expected.predictor);
    EXPECT_TRUE(result.data->bytes() == expected.data->bytes());
  }
}

TEST(ImageCompressorTest, NoPredictorIsUsedForPlainAreas) {
  const ImageLayout layout{.width = 64, .height = 64, .components = 1, .bits = 1};
  const std::string samples(layout.rowBytes() * 64, '\x55');
  const Compressed result = compress(layout, samples);
  EXPECT_EQ(result.predictor, 1);
  EXPECT_TRUE(decompressed(result, layout) == samples);
}

TEST(ImageCompressorTest, AnImageWithoutRowsIsEmptyData) {
  const ImageLayout layout{.width = 1, .height = 1};
  const Compressed result = compress(layout, "");
  EXPECT_EQ(decompressed(result, layout), "");
  EXPECT_EQ(result.begins, 1);
}

}  // namespace
}  // namespace quillpress::level3
