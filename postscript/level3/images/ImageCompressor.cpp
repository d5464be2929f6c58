#include "postscript/level3/images/ImageCompressor.h"

#include "postscript/level3/images/ImageFlateEncoder.h"
#include "postscript/level3/pdf/Deflate.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

constexpr int kPlain = 1;
constexpr int kBestOfPng = 15;
// Below so many bytes a predictor cannot save what the trial costs; jobs draw rules as masks of a few bytes,
// and the glyphs of bitmap fonts come by the hundred.
constexpr std::size_t kLeastTrialBytes = 256;
constexpr std::size_t kLeastTrialBytesOfBits = 4096;
// What a predictor leaves of a photograph holds few repetitions, and searching for them longer gains nothing.
constexpr int kFilteredEffort = 4;

// A thread's beginning and end, and its memory, take about as long as a tenth of this.
constexpr std::size_t kWorthAThread = 256UL * 1024;

// What the predictor leaves of the data.
std::vector<Byte> filtered(Bytes data, const PredictorParameters& predictor) {
  const auto result = std::make_shared<MemorySink>();
  const SinkPointer filter = withPredictor(result, predictor);
  filter->write(data);
  filter->close();
  return result->takeBytes();
}

}  // namespace

ImageCompressor::ImageCompressor(const ImageLayout& layout, Begin begin, bool mayUseThread)
    : layout_(layout), begin_(std::move(begin)), mayUseThread_(mayUseThread) {}

std::size_t ImageCompressor::trialSize(const PredictorParameters& predictor) const {
  return roughlyDeflatedSize(textOf(filtered(trial_, predictor)));
}

bool ImageCompressor::add(Bytes row) {
  if (encoder_) return encoder_->write(row);
  trial_.insert(trial_.end(), row.begin(), row.end());
  return trial_.size() < kTrialBytes || begin();
}

// A predictor costs every reader time, so a little gain is not worth it.
bool ImageCompressor::isBetterFiltered() const {
  const std::size_t least = layout_.bits == 1 ? kLeastTrialBytesOfBits : kLeastTrialBytes;
  return trial_.size() >= least &&
         trialSize(layout_.predictor(kBestOfPng)) * 20 < trialSize(layout_.predictor(kPlain)) * 19;
}

bool ImageCompressor::begin() {
  const bool usesPng = isBetterFiltered();
  const PredictorParameters chosen = layout_.predictor(usesPng ? kBestOfPng : kPlain);
  ImageFlateSettings settings;
  if (usesPng) settings.effort = kFilteredEffort;
  settings.isPredicted = usesPng;
  const std::size_t size = layout_.rowBytes() * static_cast<std::size_t>(layout_.height);
  settings.usesThread = mayUseThread_ && size >= kWorthAThread;
  encoder_ = withPredictor(imageFlateEncoder(begin_(chosen), settings), chosen);
  const std::vector<Byte> first = std::move(trial_);
  return encoder_->write(first);
}

// What zlib prepares for a stream takes longer than a small image does.
bool ImageCompressor::writeWhole() {
  const PredictorParameters chosen = layout_.predictor(isBetterFiltered() ? kBestOfPng : kPlain);
  const SinkPointer target = begin_(chosen);
  target->write(bytesOf(deflated(textOf(filtered(trial_, chosen)))));
  return target->close();
}

bool ImageCompressor::finish() {
  return encoder_ ? encoder_->close() : writeWhole();
}

}  // namespace quillpress::level3
