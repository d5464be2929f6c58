#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "postscript/level3/images/ImageFlateEncoder.h"
#include "postscript/level3/streams/FlateFilter.h"
#include "postscript/level3/streams/MemoryStreams.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

constexpr ImageFlateSettings kHere{.effort = 6};
constexpr ImageFlateSettings kInThread{.effort = 6, .usesThread = true};

// Of a linear congruential generator: what deflating makes longer.
std::string noise(std::size_t size) {
  std::string result;
  std::uint32_t state = 1;
  while (result.size() < size) {
    state = state * 1'664'525 + 1'013'904'223;
    result += static_cast<char>(state >> 24);
  }
  return result;
}

std::string plainAndNoise(std::size_t size) {
  std::string result;
  while (result.size() < size) result += std::string(100'000, 'p') + noise(70'000);
  result.resize(size);
  return result;
}

// In pieces of that many bytes.
void write(ByteSink& sink, const std::string& data, std::size_t step) {
  for (std::size_t at = 0; at < data.size(); at += step)
    EXPECT_TRUE(sink.write(bytesOf(std::string_view(data).substr(at, step))));
}

std::vector<Byte> encoded(const std::string& data, const ImageFlateSettings& settings,
                          std::size_t step = 5000) {
  const auto result = std::make_shared<MemorySink>();
  const SinkPointer encoder = imageFlateEncoder(result, settings);
  write(*encoder, data, step);
  EXPECT_TRUE(encoder->close());
  EXPECT_TRUE(result->isClosed());
  return result->takeBytes();
}

std::vector<Byte> encodedByFlateEncoder(const std::string& data) {
  const auto result = std::make_shared<MemorySink>();
  FlateEncoder encoder(result, kHere.effort);
  write(encoder, data, 5000);
  EXPECT_TRUE(encoder.close());
  return result->takeBytes();
}

std::string decoded(const std::vector<Byte>& bytes) {
  return readAll(*std::make_shared<FlateDecoder>(std::make_shared<MemorySource>(Bytes(bytes))));
}

// Small steps up and down: much like what a predictor leaves of a photograph.
std::string remainders(std::size_t size) {
  std::string result = noise(size);
  for (char& byte : result) byte = static_cast<char>(static_cast<unsigned char>(byte) % 13 - 6);
  return result;
}

const std::vector<std::string>& samples() {
  static const std::vector<std::string> all = {"",
                                               "a",
                                               std::string(3'000'000, 'x'),
                                               noise(1'500'000),
                                               plainAndNoise(1'500'000),
                                               noise(32UL * 1024),
                                               noise(6UL * 32 * 1024)};
  return all;
}

TEST(ImageFlateEncoderTest, ResultIsThatOfAFlateEncoder) {
  for (const std::string& data : samples()) EXPECT_TRUE(encoded(data, kHere) == encodedByFlateEncoder(data));
}

TEST(ImageFlateEncoderTest, AThreadChangesNothing) {
  for (const bool isPredicted : {false, true}) {
    ImageFlateSettings here = kHere;
    ImageFlateSettings inThread = kInThread;
    here.isPredicted = inThread.isPredicted = isPredicted;
    for (const std::string& data : samples()) {
      const std::vector<Byte> expected = encoded(data, here);
      for (const std::size_t step : {777UL, 32'768UL, 1'000'000UL})
        EXPECT_TRUE(encoded(data, inThread, step) == expected) << data.size() << ' ' << step;
    }
  }
}

TEST(ImageFlateEncoderTest, WithoutAThreadTheCallerDoesIt) {
  ImageFlateSettings settings = kInThread;
  settings.stackSize = ~std::size_t{0} / 4;
  const std::string data = plainAndNoise(900'000);
  EXPECT_TRUE(encoded(data, settings) == encoded(data, kHere));
}

TEST(ImageFlateEncoderTest, PredictedDataComesBackAsItWas) {
  const std::string mixed = remainders(300'000) + std::string(200'000, '\0') + plainAndNoise(400'000);
  for (const std::string& data :
       {mixed, remainders(32'768), noise(1'000'000), std::string(), std::string("abc")}) {
    const std::vector<Byte> bytes = encoded(data, {.effort = 4, .isPredicted = true});
    EXPECT_TRUE(decoded(bytes) == data) << data.size();
  }
}

TEST(ImageFlateEncoderTest, WhatAPredictorLeavesOfAPhotographIsWrittenShorter) {
  const std::string data = remainders(1'000'000);
  EXPECT_LT(encoded(data, {.effort = 4, .isPredicted = true}).size() * 100,
            encoded(data, {.effort = 4}).size() * 97);
}

TEST(ImageFlateEncoderTest, WhatAPredictorLeavesOfADrawingIsSearched) {
  std::string data;
  while (data.size() < 1'000'000) data += remainders(3000);
  EXPECT_EQ(encoded(data, {.effort = 4, .isPredicted = true}), encoded(data, {.effort = 4}));
}

TEST(ImageFlateEncoderTest, OneThatIsNotClosedIsLeft) {
  for (const std::size_t size : {0UL, 1000UL, 40'000UL, 400'000UL}) {
    const auto result = std::make_shared<MemorySink>();
    write(*imageFlateEncoder(result, kInThread), noise(size), 10'000);
    EXPECT_LE(result->bytes().size(), size + 1000);
  }
}

class FullSink final : public ByteSink {
  void take(Bytes /*bytes*/) override { fail(); }
};

TEST(ImageFlateEncoderTest, ATargetThatFailsFailsIt) {
  const SinkPointer encoder = imageFlateEncoder(std::make_shared<FullSink>(), kInThread);
  const std::string data = noise(2'000'000);
  bool isOpen = true;
  for (std::size_t at = 0; at < data.size() && isOpen; at += 10'000)
    isOpen = encoder->write(bytesOf(std::string_view(data).substr(at, 10'000)));
  EXPECT_FALSE(isOpen);
  EXPECT_FALSE(encoder->close());
}

struct Broken {};

class ThrowingSink final : public ByteSink {
  void take(Bytes /*bytes*/) override { throw Broken(); }
};

TEST(ImageFlateEncoderTest, AnExceptionOfItsTargetComesOut) {
  const SinkPointer encoder = imageFlateEncoder(std::make_shared<ThrowingSink>(), kInThread);
  EXPECT_THROW(
      {
        for (int i = 0; i < 100; ++i) encoder->write(bytesOf(noise(30'000)));
      },
      Broken);
}

}  // namespace
}  // namespace quillpress::level3
