#pragma once

#include <vector>

#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// What closing a filter means for the source or sink below it (CloseSource and CloseTarget).
enum class FilterClosing { kFilterOnly, kSourceOrTargetToo };

// A source that decodes another one. A derived class is a state machine that takes input cut anywhere.
//
// A decoder reads no byte behind its end-of-data marker. It asks its source for more only when it has nothing
// to deliver, so that a procedure is not run before its data is needed; what the source has buffered is
// decoded at once, so that the marker is gone when the last byte in front of it has been read.
class Decoder : public ByteSource {
 public:
  static constexpr std::size_t kBlockSize = 16384;

  // What it decodes; null when it is closed. For those who pass data on as it is, while nothing has been
  // read.
  [[nodiscard]] const SourcePointer& below() const { return source_; }

 protected:
  struct Progress {
    std::size_t consumed = 0;
    std::size_t produced = 0;
  };

  Decoder(SourcePointer source, FilterClosing closing) : source_(std::move(source)), closing_(closing) {}

  // Decodes from the start of `input` to the start of `output`; either may be used in part, and either may be
  // empty: without input, what is held back is delivered, and without room the end of the data is still to be
  // recognised. Calls finish() after the marker and fail() for bad data.
  virtual Progress decode(Bytes input, std::span<Byte> output) = 0;

  // The source has ended without a marker. Returns how many bytes were still to be delivered; called again
  // until the decoder is no longer open. Data without a marker is taken as it is, unless something is
  // missing.
  virtual std::size_t decodeEnd(std::span<Byte> /*output*/) {
    finish();
    return 0;
  }

  // Whether the end of the source is an end of the data like any other.
  [[nodiscard]] virtual bool endsWithItsSource() const { return false; }

  void release() override;

 private:
  Bytes nextBlock() final;
  std::size_t sourceEnded();

  SourcePointer source_;
  FilterClosing closing_;
  std::vector<Byte> block_;
};

// A sink that encodes into another one.
class Encoder : public ByteSink {
 protected:
  Encoder(SinkPointer target, FilterClosing closing) : target_(std::move(target)), closing_(closing) {}

  // Encodes `bytes` with emit().
  virtual void encode(Bytes bytes) = 0;

  // Emits what a flush can bring out without changing what follows.
  virtual void encodeFlush() {}

  // Emits what is held back and the end-of-data marker.
  virtual void encodeEnd() {}

  void emit(Bytes bytes);
  void emit(Byte byte) { emit({&byte, 1}); }

 private:
  void take(Bytes bytes) final { encode(bytes); }
  void handOn() final;
  void release() final;
  void writeOut();

  SinkPointer target_;
  FilterClosing closing_;
  std::vector<Byte> out_;
};

}  // namespace quillpress::level3
