#pragma once

#include <functional>
#include <vector>

#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// Pieces of any length that a callback makes, such as the strings that a procedure returns. Each piece is
// copied, because a procedure is free to use one string again and again.
class PieceSource : public ByteSource {
 public:
  // The next piece, borrowed until the next call; an empty one is the end, nothing at all an error.
  using Callback = std::function<std::optional<Bytes>()>;

  explicit PieceSource(Callback callback) : callback_(std::make_shared<Callback>(std::move(callback))) {}

 private:
  Bytes nextBlock() override;
  void release() override { callback_.reset(); }

  std::shared_ptr<Callback> callback_;  // shared with the call that is running, which may close this source
  std::vector<Byte> piece_;
};

// A device that fills blocks.
class BlockSource final : public ByteSource {
 public:
  // Fills the start of the block and returns how much that was: 0 is the end, nothing at all an error.
  using Callback = std::function<std::optional<std::size_t>(std::span<Byte>)>;

  explicit BlockSource(Callback callback, std::size_t blockSize = 65536)
      : callback_(std::move(callback)), block_(blockSize) {}

 private:
  Bytes nextBlock() override;
  void release() override { callback_ = nullptr; }

  Callback callback_;
  std::vector<Byte> block_;
};

// Hands every piece to a callback; at the end one call with an empty piece.
class PieceSink final : public ByteSink {
 public:
  // False is an error.
  using Callback = std::function<bool(Bytes piece)>;

  explicit PieceSink(Callback callback) : callback_(std::make_shared<Callback>(std::move(callback))) {}

 private:
  void take(Bytes bytes) override;
  void release() override;

  std::shared_ptr<Callback> callback_;  // shared with the call that is running, which may close this sink
};

}  // namespace quillpress::level3
