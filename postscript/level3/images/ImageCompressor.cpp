#include "postscript/level3/images/ImageCompressor.h"

#include "postscript/level3/streams/FlateFilter.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

constexpr int kPlain = 1;
constexpr int kBestOfPng = 15;
// The trial need not compress well, only alike.
constexpr int kTrialEffort = 1;
// Below so many bytes a predictor cannot save what the trial costs; jobs draw rules as masks of a few bytes.
constexpr std::size_t kLeastTrialBytes = 256;
// What a predictor leaves of a photograph holds few repetitions, and searching for them longer gains nothing.
constexpr int kFilteredEffort = 4;

// Counts, and keeps nothing.
std::size_t compressedSize(Bytes data, const PredictorParameters& predictor) {
  const auto counter = std::make_shared<NullSink>();
  const SinkPointer encoder = withPredictor(std::make_shared<FlateEncoder>(counter, kTrialEffort), predictor);
  encoder->write(data);
  encoder->close();
  return static_cast<std::size_t>(counter->position());
}

}  // namespace

ImageCompressor::ImageCompressor(const ImageLayout& layout, Begin begin)
    : layout_(layout), begin_(std::move(begin)) {}

std::size_t ImageCompressor::trialSize(const PredictorParameters& predictor) const {
  return compressedSize(trial_, predictor);
}

bool ImageCompressor::add(Bytes row) {
  if (encoder_) return encoder_->write(row);
  trial_.insert(trial_.end(), row.begin(), row.end());
  return trial_.size() < kTrialBytes || begin();
}

bool ImageCompressor::begin() {
  const PredictorParameters plain = layout_.predictor(kPlain);
  const PredictorParameters png = layout_.predictor(kBestOfPng);
  // A predictor costs every reader time, so a little gain is not worth it.
  const bool usesPng = trial_.size() >= kLeastTrialBytes && trialSize(png) * 20 < trialSize(plain) * 19;
  const PredictorParameters& chosen = usesPng ? png : plain;
  const auto flate =
      std::make_shared<FlateEncoder>(begin_(chosen), usesPng ? kFilteredEffort : FlateEncoder::kDefaultEffort,
                                     FilterClosing::kSourceOrTargetToo);
  encoder_ = withPredictor(flate, chosen);
  const std::vector<Byte> first = std::move(trial_);
  return encoder_->write(first);
}

bool ImageCompressor::finish() {
  return (encoder_ || begin()) && encoder_->close();
}

}  // namespace quillpress::level3
