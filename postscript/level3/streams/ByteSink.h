#pragma once

#include <memory>

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// Takes bytes in order. Every operation returns false when it could not be done, and from then on does
// nothing: the state says whether the sink was full or closed (kEnd, kClosed) or failed (kError).
class ByteSink : public Stream {
 public:
  virtual ~ByteSink() = default;

  bool write(Bytes bytes);
  bool put(Byte byte) { return write({&byte, 1}); }

  // Hands on what is buffered as far as the coding allows.
  bool flush();

  // Writes what is still due, an end-of-data marker for instance, and lets the device go. Closing a closed
  // sink does nothing and succeeds. A sink that is destroyed without having been closed writes nothing more.
  bool close();

  // How many bytes have been taken.
  [[nodiscard]] std::uint64_t position() const { return position_; }

  [[nodiscard]] virtual bool canSeek() const { return false; }

  // What is written next goes to `position`, counted from the start. False, and no change, when that cannot
  // be.
  bool seek(std::uint64_t position);

 protected:
  ByteSink() = default;

  // Each may call finish() or fail(); what they return is then overruled.
  virtual void take(Bytes bytes) = 0;
  virtual void handOn() {}
  virtual void release() {}
  virtual bool moveTo(std::uint64_t /*position*/) { return false; }

  // The sink is full: nothing more can be written.
  void finish() { setState(StreamState::kEnd); }

 private:
  std::uint64_t position_ = 0;
};

using SinkPointer = std::shared_ptr<ByteSink>;

class ByteSource;

// Reads `source` to its end into `sink`. False when one of them fails or the sink is full.
bool copyAll(ByteSource& source, ByteSink& sink);

}  // namespace quillpress::level3
