#pragma once

#include <array>
#include <optional>
#include <vector>

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

// What DCT data turns out to be, known when the header has been read.
struct DctFrame {
  int columns = 0;
  int rows = 0;
  int colors = 0;
};

// JPEG data, baseline or progressive. Samples come out in rows of interleaved components of 8 bits.
class DctDecoder final : public Decoder {
 public:
  // `colorTransform`: whether three or four components are luminance and chrominance (with black). Without
  // it, three are and four are not; what the data itself says counts more.
  explicit DctDecoder(SourcePointer source, std::optional<bool> colorTransform = std::nullopt,
                      FilterClosing closing = FilterClosing::kFilterOnly);
  ~DctDecoder() override;

  // Nothing before the first byte is there.
  [[nodiscard]] std::optional<DctFrame> frame() const;
  // As it was given.
  [[nodiscard]] std::optional<bool> colorTransform() const;

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  std::size_t decodeEnd(std::span<Byte> output) override;
  std::size_t deliver(std::span<Byte> output);

  struct State;
  std::unique_ptr<State> state_;
};

struct DctParameters {
  static constexpr int kMaxColors = 4;
  using QuantTable = std::array<unsigned, 64>;  // in zigzag order
  struct HuffTable {
    std::array<Byte, 16> counts{};  // of the codes of each length
    std::vector<Byte> values;
  };

  int columns = 1;
  int rows = 1;
  int colors = 1;  // 1 to 4
  std::optional<bool> colorTransform = std::nullopt;
  std::array<int, kMaxColors> horizontalSamples = {1, 1, 1, 1};  // 1 to 4 each
  std::array<int, kMaxColors> verticalSamples = {1, 1, 1, 1};
  double qFactor = 1.0;                      // scales the quantization
  std::vector<QuantTable> quantTables = {};  // one a component, or none for the usual ones
  std::vector<HuffTable> huffTables = {};    // two a component, DC and AC, or none for the usual ones
};

// Writes baseline JPEG data. More or less data than the rows need is an error.
class DctEncoder final : public Encoder {
 public:
  DctEncoder(SinkPointer target, const DctParameters& parameters,
             FilterClosing closing = FilterClosing::kFilterOnly);
  ~DctEncoder() override;

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override;
  bool isComplete() const;

  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quillpress::level3
