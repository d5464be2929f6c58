#pragma once

#include <optional>
#include <vector>

#include "postscript/level3/streams/Filter.h"
#include "postscript/level3/streams/PngRow.h"

namespace quillpress::level3 {

// What LZW and Flate filters know about the samples that they carry.
struct PredictorParameters {
  int predictor = 1;         // 1: none, 2: TIFF's, 10 to 15: PNG's
  int colors = 1;            // 1 to 60
  int bitsPerComponent = 8;  // 1, 2, 4, 8 or 16
  int columns = 1;           // at least 1

  [[nodiscard]] std::size_t rowBytes() const;
  [[nodiscard]] std::size_t pixelBytes() const;  // at least 1
};

// Puts the decoder of a predictor over `source`, which is closed with it; nothing when there is none.
SourcePointer withPredictor(SourcePointer source, const PredictorParameters& parameters);

// Puts the encoder of a predictor over `target`, which is closed with it; nothing when there is none.
SinkPointer withPredictor(SinkPointer target, const PredictorParameters& parameters);

// Differences between the components of neighbouring pixels of a row, for components of any depth.
class TiffDifferences {
 public:
  explicit TiffDifferences(const PredictorParameters& parameters);

  // From differences to samples, and back; in place, rows cut anywhere. With 16 bits, at even bytes.
  void toSamples(std::span<Byte> bytes);
  void toDifferences(std::span<Byte> bytes);

  [[nodiscard]] std::size_t unit() const { return bits_ == 16 ? 2 : 1; }

 private:
  template <typename Convert>
  void forEachSample(std::span<Byte> bytes, Convert convert);

  std::size_t rowBytes_;
  std::size_t samplesInRow_;
  unsigned bits_;
  std::vector<unsigned> left_;  // a sample for each component
  std::size_t byteInRow_ = 0;
  std::size_t sampleInRow_ = 0;
  std::size_t component_ = 0;
};

class TiffPredictorDecoder final : public Decoder {
 public:
  TiffPredictorDecoder(SourcePointer source, const PredictorParameters& parameters)
      : Decoder(std::move(source), FilterClosing::kSourceOrTargetToo), differences_(parameters) {}

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  std::size_t decodeEnd(std::span<Byte> output) override;

  TiffDifferences differences_;
  std::optional<Byte> half_;  // the first byte of a sample of two
};

class TiffPredictorEncoder final : public Encoder {
 public:
  TiffPredictorEncoder(SinkPointer target, const PredictorParameters& parameters)
      : Encoder(std::move(target), FilterClosing::kSourceOrTargetToo), differences_(parameters) {}

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override;

  TiffDifferences differences_;
  std::vector<Byte> samples_;  // at the start of encode(), perhaps the first byte of a sample of two
};

class PngPredictorDecoder final : public Decoder {
 public:
  PngPredictorDecoder(SourcePointer source, const PredictorParameters& parameters)
      : Decoder(std::move(source), FilterClosing::kSourceOrTargetToo),
        rowBytes_(parameters.rowBytes()),
        pixel_(parameters.pixelBytes()),
        upLeft_(pixel_) {}

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  void decodeBytes(Bytes input, Byte* output);
  Byte decodeByte(Byte byte);

  std::size_t rowBytes_;
  std::size_t pixel_;
  bool inRow_ = false;
  PngFilter filter_ = PngFilter::kNone;
  std::size_t place_ = 0;
  // The row so far, and from place_ on the one above. Grows with the first row's data, since what the
  // parameters promise may never come.
  std::vector<Byte> row_;
  std::vector<Byte> upLeft_;  // what the last pixel of row_ has overwritten, as a ring
};

class PngPredictorEncoder final : public Encoder {
 public:
  PngPredictorEncoder(SinkPointer target, const PredictorParameters& parameters)
      : Encoder(std::move(target), FilterClosing::kSourceOrTargetToo),
        predictor_(parameters.predictor),
        rowBytes_(parameters.rowBytes()),
        pixel_(parameters.pixelBytes()) {}

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override;
  void emitRow();

  int predictor_;
  std::size_t rowBytes_;
  std::size_t pixel_;
  std::vector<Byte> row_;
  std::vector<Byte> prior_;
  std::vector<Byte> filtered_;
};

}  // namespace quillpress::level3
