#pragma once

#include <memory>
#include <optional>

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// Bytes to be read, pulled in blocks:
//
//   while (source.refill()) {
//     const Bytes block = source.peek();
//     source.consume(use(block));
//   }
//   if (source.hasFailed()) ...
//
// A block may end anywhere. The state is that of the source behind the buffered bytes, so it is looked at
// when refill() has returned false and not before.
class ByteSource : public Stream {
 public:
  static constexpr int kNoByte = -1;

  virtual ~ByteSource() = default;

  // What is buffered, perhaps nothing. Borrowed until the next refill(), seek() or close().
  [[nodiscard]] Bytes peek() const { return {cursor_, limit_}; }

  // REQUIRES: count <= peek().size()
  void consume(std::size_t count) { cursor_ += count; }

  // Makes peek() hold at least one byte. False at the end, after an error and when closed.
  bool refill() { return cursor_ != limit_ || readBlock(); }

  // The next byte, or kNoByte.
  int get() { return refill() ? *cursor_++ : kNoByte; }

  // Fills `target` as far as the source goes; returns how far that was.
  std::size_t read(std::span<Byte> target);

  // Reads and drops all that is left.
  void drain();

  // How many bytes have been consumed since the start of the source.
  [[nodiscard]] std::uint64_t position() const {
    return offset_ + static_cast<std::uint64_t>(cursor_ - begin_);
  }

  // Takes back the last `count` consumed bytes. False, and no change, when they are no longer buffered.
  bool giveBack(std::size_t count);

  [[nodiscard]] virtual bool canSeek() const { return false; }

  // Whether its end is no reason to close it: what can be read again has just one end among others.
  [[nodiscard]] virtual bool staysOpen() const { return false; }

  // Goes on at `position`, counted from the start; also after the end. False, and no change, when the source
  // cannot be there.
  bool seek(std::uint64_t position);

  // How many bytes can be read without waiting, or nothing when that cannot be told.
  [[nodiscard]] virtual std::optional<std::uint64_t> available() const;

  // Drops what is buffered (`resetfile`); the source itself stays where its last block ended.
  void dropBuffered() { cursor_ = limit_; }

  // Nothing more is read; the device is let go. A second call does nothing.
  void close();

  // A reader that was in the middle of something (`what`, a literal such as "a string") tells the source so
  // when it finds the end. A source that can be cut off on its way remembers that.
  virtual void endedWithin(std::string_view /*what*/) {}

 protected:
  ByteSource() = default;

  // The next block, borrowed until the next call. May call finish() or fail() at the same time, to say what
  // comes after it. An empty block is the end, when nothing else has been said.
  virtual Bytes nextBlock() = 0;

  // The next block will begin at `position`. False when that cannot be.
  virtual bool moveTo(std::uint64_t /*position*/) { return false; }

  // Lets go of the device. The buffered block is still valid.
  virtual void release() {}

  void finish() { setState(StreamState::kEnd); }

 private:
  bool readBlock();
  void setBlock(Bytes block);

  const Byte* begin_ = nullptr;
  const Byte* cursor_ = nullptr;
  const Byte* limit_ = nullptr;
  std::uint64_t offset_ = 0;  // of begin_
};

using SourcePointer = std::shared_ptr<ByteSource>;

}  // namespace quillpress::level3
