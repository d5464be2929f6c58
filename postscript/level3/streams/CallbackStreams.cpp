#include "postscript/level3/streams/CallbackStreams.h"

#include <algorithm>

namespace quillpress::level3 {

Bytes PieceSource::nextBlock() {
  const std::shared_ptr<Callback> callback = callback_;
  const std::optional<Bytes> piece = (*callback)();
  if (!piece) {
    fail();
    return {};
  }
  piece_.assign(piece->begin(), piece->end());
  return piece_;
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
  const std::shared_ptr<Callback> callback = callback_;
  if (!(*callback)(bytes)) fail();
}

void PieceSink::release() {
  const std::shared_ptr<Callback> callback = std::move(callback_);
  if (isOpen() && callback && !(*callback)({})) fail();
}

}  // namespace quillpress::level3
