#pragma once

#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// Hands on what another source has, and copies to a sink what is consumed of it: what a decoder reads is then
// known byte for byte, and can be passed on as it is.
class TeeSource final : public ByteSource {
 public:
  TeeSource(SourcePointer source, SinkPointer copy) : source_(std::move(source)), copy_(std::move(copy)) {}

  // Copies what has been consumed since the last block, and leaves the source behind it.
  void settle();

  void endedWithin(std::string_view what) override { source_->endedWithin(what); }

 private:
  Bytes nextBlock() override;
  void release() override { settle(); }

  SourcePointer source_;
  SinkPointer copy_;
  std::uint64_t settled_ = 0;  // position of this source up to which the other one has been consumed
};

}  // namespace quillpress::level3
