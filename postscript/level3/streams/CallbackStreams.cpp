#include "postscript/level3/streams/CallbackStreams.h"

#include <algorithm>

namespace quillpress::level3 {

Bytes PieceSource::nextBlock() {
  const std::optional<Bytes> piece = callback_();
  if (!piece) {
    fail();
    return {};
  }
  piece_.assign(piece->begin(), piece->end());
  return piece_;
}

void PieceSource::release() {
  callback_ = nullptr;
}

Bytes BlockSource::nextBlock() {
  const std::optional<std::size_t> filled = callback_(block_);
  if (!filled) {
    fail();
    return {};
  }
  return Bytes(block_).first(std::min(*filled, block_.size()));
}

void PieceSink::take(Bytes bytes) {
  if (!callback_(bytes)) fail();
}

void PieceSink::release() {
  if (isOpen() && !callback_({})) fail();
  callback_ = nullptr;
}

}  // namespace quillpress::level3
