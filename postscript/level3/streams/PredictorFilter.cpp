#include "postscript/level3/streams/PredictorFilter.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

namespace {

constexpr int kTiffPredictor = 2;
constexpr int kFirstPngPredictor = 10;
constexpr int kBestPngPredictor = 15;

}  // namespace

std::size_t PredictorParameters::rowBytes() const {
  const auto bits = static_cast<std::uint64_t>(colors) * static_cast<std::uint64_t>(bitsPerComponent) *
                    static_cast<std::uint64_t>(columns);
  return static_cast<std::size_t>((bits + 7) / 8);
}

std::size_t PredictorParameters::pixelBytes() const {
  return (static_cast<std::size_t>(colors) * static_cast<std::size_t>(bitsPerComponent) + 7) / 8;
}

SourcePointer withPredictor(SourcePointer source, const PredictorParameters& parameters) {
  if (parameters.predictor == kTiffPredictor) {
    return std::make_shared<TiffPredictorDecoder>(std::move(source), parameters);
  }
  if (parameters.predictor >= kFirstPngPredictor) {
    return std::make_shared<PngPredictorDecoder>(std::move(source), parameters);
  }
  return source;
}

SinkPointer withPredictor(SinkPointer target, const PredictorParameters& parameters) {
  if (parameters.predictor == kTiffPredictor) {
    return std::make_shared<TiffPredictorEncoder>(std::move(target), parameters);
  }
  if (parameters.predictor >= kFirstPngPredictor) {
    return std::make_shared<PngPredictorEncoder>(std::move(target), parameters);
  }
  return target;
}

TiffDifferences::TiffDifferences(const PredictorParameters& parameters)
    : rowBytes_(parameters.rowBytes()),
      samplesInRow_(static_cast<std::size_t>(parameters.colors) *
                    static_cast<std::size_t>(parameters.columns)),
      bits_(static_cast<unsigned>(parameters.bitsPerComponent)),
      left_(static_cast<std::size_t>(parameters.colors)) {}

// Replaces each sample by convert(sample, left), which also says what is the next pixel's `left`. The bits
// that fill up the last byte of a row stay as they are.
template <typename Convert>
void TiffDifferences::forEachSample(std::span<Byte> bytes, Convert convert) {
  const std::size_t step = unit();
  const unsigned unitBits = static_cast<unsigned>(step) * 8;
  const unsigned mask = (1U << bits_) - 1;
  for (std::size_t i = 0; i + step <= bytes.size(); i += step) {
    unsigned unitValue = step == 2 ? static_cast<unsigned>(bytes[i] << 8 | bytes[i + 1]) : bytes[i];
    for (unsigned shift = unitBits; shift > 0 && sampleInRow_ < samplesInRow_; ++sampleInRow_) {
      shift -= bits_;
      const unsigned sample = convert(unitValue >> shift & mask, left_[component_]) & mask;
      unitValue = (unitValue & ~(mask << shift)) | sample << shift;
      if (++component_ == left_.size()) component_ = 0;
    }
    bytes[i + step - 1] = static_cast<Byte>(unitValue);
    if (step == 2) bytes[i] = static_cast<Byte>(unitValue >> 8);
    byteInRow_ += step;
    if (byteInRow_ < rowBytes_) continue;
    byteInRow_ = sampleInRow_ = component_ = 0;
    std::fill(left_.begin(), left_.end(), 0);
  }
}

void TiffDifferences::toSamples(std::span<Byte> bytes) {
  forEachSample(bytes, [](unsigned difference, unsigned& left) { return left += difference; });
}

void TiffDifferences::toDifferences(std::span<Byte> bytes) {
  forEachSample(bytes, [](unsigned sample, unsigned& left) {
    const unsigned difference = sample - left;
    left = sample;
    return difference;
  });
}

Decoder::Progress TiffPredictorDecoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  if (differences_.unit() == 1) {
    step.consumed = step.produced = std::min(input.size(), output.size());
    if (step.consumed > 0) std::memcpy(output.data(), input.data(), step.consumed);
    differences_.toSamples(output.first(step.produced));
    return step;
  }
  for (; step.consumed < input.size() && output.size() - step.produced >= 2; ++step.consumed) {
    if (!half_) {
      half_ = input[step.consumed];
      continue;
    }
    output[step.produced] = *half_;
    output[step.produced + 1] = input[step.consumed];
    half_.reset();
    step.produced += 2;
  }
  differences_.toSamples(output.first(step.produced));
  return step;
}

// Half of a sample is delivered as it came, like all data that ends too early.
std::size_t TiffPredictorDecoder::decodeEnd(std::span<Byte> output) {
  finish();
  if (!half_) return 0;
  output[0] = *half_;
  return 1;
}

void TiffPredictorEncoder::encode(Bytes bytes) {
  samples_.insert(samples_.end(), bytes.begin(), bytes.end());
  const std::size_t whole = samples_.size() - samples_.size() % differences_.unit();
  const std::span<Byte> ready = std::span(samples_).first(whole);
  differences_.toDifferences(ready);
  emit(ready);
  samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(whole));
}

void TiffPredictorEncoder::encodeEnd() {
  emit(samples_);
}

Decoder::Progress PngPredictorDecoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  while (step.consumed < input.size()) {
    if (!inRow_) {
      const Byte number = input[step.consumed];
      if (number >= kPngFilterCount) {
        fail();
        break;
      }
      ++step.consumed;
      filter_ = static_cast<PngFilter>(number);
      inRow_ = true;
      place_ = 0;
      std::fill(upLeft_.begin(), upLeft_.end(), Byte{0});
      continue;
    }
    const std::size_t count =
        std::min({rowBytes_ - place_, input.size() - step.consumed, output.size() - step.produced});
    if (count == 0) break;
    if (row_.size() < place_ + count) row_.resize(place_ + count);
    decodeBytes(input.subspan(step.consumed, count), output.data() + step.produced);
    step.consumed += count;
    step.produced += count;
    inRow_ = place_ < rowBytes_;
  }
  return step;
}

void PngPredictorDecoder::decodeBytes(Bytes input, Byte* output) {
  if (filter_ == PngFilter::kNone || filter_ == PngFilter::kUp) {
    // Nothing of the upper left is asked for in this row.
    Byte* row = row_.data() + place_;
    const int keep = filter_ == PngFilter::kUp ? 0xFF : 0;
    for (std::size_t i = 0; i < input.size(); ++i) {
      output[i] = row[i] = static_cast<Byte>(input[i] + (row[i] & keep));
    }
    place_ += input.size();
    return;
  }
  for (const Byte byte : input) *output++ = decodeByte(byte);
}

Byte PngPredictorDecoder::decodeByte(Byte byte) {
  const Byte up = row_[place_];
  const Byte left = place_ < pixel_ ? Byte{0} : row_[place_ - pixel_];
  Byte& upLeft = upLeft_[place_ % pixel_];
  int predicted = left;
  if (filter_ == PngFilter::kAverage) predicted = (left + up) / 2;
  if (filter_ == PngFilter::kPaeth) predicted = paeth(left, up, upLeft);
  upLeft = up;
  row_[place_] = static_cast<Byte>(byte + predicted);
  return row_[place_++];
}

void PngPredictorEncoder::encode(Bytes bytes) {
  while (!bytes.empty()) {
    const std::size_t count = std::min(bytes.size(), rowBytes_ - row_.size());
    row_.insert(row_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    bytes = bytes.subspan(count);
    if (row_.size() == rowBytes_) emitRow();
  }
}

void PngPredictorEncoder::encodeEnd() {
  if (!row_.empty()) emitRow();
}

void PngPredictorEncoder::emitRow() {
  prior_.resize(row_.size());
  filtered_.resize(row_.size());
  const PngFilter filter = predictor_ == kBestPngPredictor
                               ? bestPngFilter(row_, prior_, pixel_)
                               : static_cast<PngFilter>(predictor_ - kFirstPngPredictor);
  filterPngRow(filter, row_, prior_, pixel_, filtered_.data());
  emit(static_cast<Byte>(filter));
  emit(filtered_);
  prior_.swap(row_);
  row_.clear();
}

}  // namespace quillpress::level3
