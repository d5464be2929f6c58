#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

Bytes Decoder::nextBlock() {
  // A procedure below may close this very filter while it is asked for data.
  const SourcePointer source = source_;
  block_.resize(kBlockSize);
  std::size_t used = 0;
  while (isOpen()) {
    const Progress step = decode(source->peek(), std::span(block_).subspan(used));
    source->consume(step.consumed);
    used += step.produced;
    if (step.consumed > 0 || step.produced > 0) continue;
    if (used > 0 || !source->peek().empty()) break;
    if (!source->refill()) {
      if (isOpen()) used = sourceEnded();
      break;
    }
  }
  return Bytes(block_).first(used);
}

std::size_t Decoder::sourceEnded() {
  if (source_->hasFailed()) {
    fail(source_->errorName());
    return 0;
  }
  if (!endsWithItsSource()) source_->endedWithin("the data of a filter");
  return decodeEnd(block_);
}

void Decoder::release() {
  const SourcePointer source = std::move(source_);
  if (source && closing_ == FilterClosing::kSourceOrTargetToo) source->close();
}

void Encoder::emit(Bytes bytes) {
  if (!isOpen()) return;
  out_.insert(out_.end(), bytes.begin(), bytes.end());
  if (out_.size() >= Decoder::kBlockSize) writeOut();
}

void Encoder::writeOut() {
  if (out_.empty() || !target_) return;
  // A procedure below may write to this very filter, or close it.
  const SinkPointer target = target_;
  std::vector<Byte> block;
  block.swap(out_);
  if (!target->write(block)) {
    if (isOpen()) fail(target->hasFailed() ? target->errorName() : "ioerror");
    return;
  }
  if (out_.empty()) {
    block.clear();
    out_.swap(block);
  }
}

void Encoder::handOn() {
  encodeFlush();
  if (isOpen()) writeOut();
  if (isOpen() && target_ && !target_->flush()) fail(target_->errorName());
}

void Encoder::release() {
  if (isOpen()) encodeEnd();
  if (isOpen()) writeOut();
  const SinkPointer target = std::move(target_);
  if (!target || closing_ == FilterClosing::kFilterOnly) return;
  if (!target->close()) fail(target->errorName());
}

}  // namespace quillpress::level3
