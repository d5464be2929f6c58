#pragma once

#include <functional>
#include <vector>

#include "postscript/level3/images/ImageLayout.h"

namespace quillpress::level3 {

// Compresses an image's rows for FlateDecode as they come. Whether a predictor helps is tried on the first
// rows; the rest is not kept. An image that ends with them is compressed whole.
class ImageCompressor {
 public:
  // Called once, before the first byte of data: the predictor is 1, for none, or 15. Gives where the data
  // goes.
  using Begin = std::function<SinkPointer(const PredictorParameters& predictor)>;

  // `layout` is one that PDF has. With `mayUseThread` a large image is compressed in a thread of its own.
  ImageCompressor(const ImageLayout& layout, Begin begin, bool mayUseThread = false);

  // False when the data cannot be written.
  bool add(Bytes row);
  bool finish();

 private:
  static constexpr std::size_t kTrialBytes = 65536;

  [[nodiscard]] bool isBetterFiltered() const;
  bool begin();
  bool writeWhole();
  [[nodiscard]] std::size_t trialSize(const PredictorParameters& predictor) const;

  ImageLayout layout_;
  Begin begin_;
  bool mayUseThread_;
  std::vector<Byte> trial_;  // the first rows
  SinkPointer encoder_;
};

}  // namespace quillpress::level3
