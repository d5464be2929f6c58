#pragma once

#include <optional>
#include <vector>

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// Walks through JPEG data cut anywhere, to find what it is and where it ends, without decoding it: data that
// need not be changed is passed on as it is.
class JpegScanner {
 public:
  struct Frame {
    int width = 0;
    int height = 0;
    int components = 0;
    int bits = 0;
  };

  // Takes the data's next bytes up to its end, and returns how many that are.
  std::size_t scan(Bytes bytes);

  [[nodiscard]] bool isDone() const { return state_ == State::kDone; }
  [[nodiscard]] bool isBad() const { return state_ == State::kBad; }
  [[nodiscard]] const std::optional<Frame>& frame() const { return frame_; }
  // What the maker's marker says of the colours: 0 none, 1 or 2 luminance and chrominance. Nothing without
  // it.
  [[nodiscard]] std::optional<int> transform() const { return transform_; }

 private:
  enum class State {
    kStart,
    kStartOfImage,
    kMarker,
    kCode,
    kLength,
    kLengthLow,
    kSegment,
    kScan,
    kScanCode,
    kDone,
    kBad
  };

  void take(Byte byte);
  void takeCode(Byte code);
  void endSegment();

  State state_ = State::kStart;
  Byte code_ = 0;
  std::size_t left_ = 0;       // of the segment
  std::vector<Byte> segment_;  // its beginning
  std::optional<Frame> frame_;
  std::optional<int> transform_;
};

}  // namespace quillpress::level3
