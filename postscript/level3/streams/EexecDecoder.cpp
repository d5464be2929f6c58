#include "postscript/level3/streams/EexecDecoder.h"

#include <algorithm>

#include "postscript/level3/streams/CharacterClass.h"

namespace quillpress::level3 {

Bytes EexecDecoder::nextBlock() {
  const SourcePointer source = source_;
  block_.clear();
  consumedFor_.clear();
  consumed_ = 0;
  if (!headIsDone_ && readHead(*source)) {
    headIsDone_ = true;
    isHex_ = std::all_of(head_.begin(), head_.end(), [](Byte byte) { return hexDigit(byte) >= 0; });
    decrypt(head_);
  }
  while (isOpen() && block_.empty() && source->refill()) {
    // One block of the source at the most, so that all of it can be given back.
    consumed_ = 0;
    decrypt(source->peek().first(std::min(source->peek().size(), kBlockSize)));
    source->consume(consumed_);
  }
  sourcePosition_ = source->position();
  if (block_.empty() && source->hasFailed()) fail(source->errorName());
  return block_;
}

// Reads the bytes that tell hexadecimal digits from binary data; white space in front belongs to the line of
// `eexec`. False when the source ends before.
bool EexecDecoder::readHead(ByteSource& source) {
  while (head_.size() < kHeadSize) {
    const int byte = source.get();
    if (byte == ByteSource::kNoByte || !isOpen()) return false;
    if (!head_.empty() || !isWhiteSpace(static_cast<Byte>(byte))) head_.push_back(static_cast<Byte>(byte));
  }
  return true;
}

void EexecDecoder::decrypt(Bytes input) {
  for (const Byte byte : input) {
    if (!isHex_) {
      ++consumed_;
      deliver(cipher_.decrypt(byte), consumed_);
    } else if (!decryptHex(byte)) {
      finish();
      return;
    }
  }
}

// False for what is no digit: it ends the data and stays unread.
bool EexecDecoder::decryptHex(Byte byte) {
  const int digit = hexDigit(byte);
  if (digit < 0 && !isWhiteSpace(byte)) return false;
  ++consumed_;
  if (digit < 0) return true;
  if (firstDigit_ < 0) {
    firstDigit_ = digit;
  } else {
    deliver(cipher_.decrypt(static_cast<Byte>(firstDigit_ << 4 | digit)), consumed_);
    firstDigit_ = -1;
  }
  return true;
}

void EexecDecoder::deliver(Byte plain, std::size_t consumed) {
  if (toSkip_ > 0) {
    --toSkip_;
    return;
  }
  block_.push_back(plain);
  consumedFor_.push_back(consumed);
}

void EexecDecoder::release() {
  const SourcePointer source = std::move(source_);
  // Whoever has read the source in between has moved on from where this block ended.
  if (!source || source->position() != sourcePosition_) return;
  const std::size_t used = block_.size() - peek().size();
  if (used == 0 && peek().empty()) return;
  source->giveBack(consumed_ - (used == 0 ? 0 : consumedFor_[used - 1]));
}

}  // namespace quillpress::level3
