#include "postscript/level3/streams/ByteSource.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

void ByteSource::setBlock(Bytes block) {
  offset_ += static_cast<std::uint64_t>(limit_ - begin_);
  begin_ = cursor_ = block.data();
  limit_ = begin_ + block.size();
}

bool ByteSource::readBlock() {
  if (!isOpen()) return false;
  const Bytes block = nextBlock();
  if (isClosed()) return false;
  setBlock(block);
  if (!block.empty()) return true;
  if (isOpen()) finish();
  return false;
}

std::size_t ByteSource::read(std::span<Byte> target) {
  std::size_t done = 0;
  while (done < target.size() && refill()) {
    const std::size_t step = std::min(target.size() - done, peek().size());
    std::memcpy(target.data() + done, cursor_, step);
    consume(step);
    done += step;
  }
  return done;
}

void ByteSource::drain() {
  while (refill()) dropBuffered();
}

bool ByteSource::giveBack(std::size_t count) {
  if (count > static_cast<std::size_t>(cursor_ - begin_)) return false;
  cursor_ -= count;
  return true;
}

bool ByteSource::seek(std::uint64_t position) {
  if (isClosed() || !canSeek()) return false;
  const std::uint64_t buffered = offset_ + static_cast<std::uint64_t>(limit_ - begin_);
  if (position >= offset_ && position < buffered) {
    cursor_ = begin_ + (position - offset_);
    return true;
  }
  if (!moveTo(position)) return false;
  setState(StreamState::kOpen);
  begin_ = cursor_ = limit_ = nullptr;
  offset_ = position;
  return true;
}

std::optional<std::uint64_t> ByteSource::available() const {
  if (cursor_ == limit_) return std::nullopt;
  return static_cast<std::uint64_t>(limit_ - cursor_);
}

void ByteSource::close() {
  if (isClosed()) return;
  release();
  offset_ = position();
  begin_ = cursor_ = limit_ = nullptr;
  setState(StreamState::kClosed);
}

}  // namespace quillpress::level3
