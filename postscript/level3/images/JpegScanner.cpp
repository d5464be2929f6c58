#include "postscript/level3/images/JpegScanner.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

namespace {

constexpr Byte kPrefix = 0xFF;
constexpr Byte kStartOfImage = 0xD8;
constexpr Byte kEndOfImage = 0xD9;
constexpr Byte kStartOfScan = 0xDA;
constexpr Byte kApplication14 = 0xEE;
// Enough of a segment for what is read of it.
constexpr std::size_t kKept = 16;

constexpr bool isRestart(Byte code) {
  return code >= 0xD0 && code <= 0xD7;
}

// SOF0 to SOF15 without the three codes between them that are something else.
constexpr bool isStartOfFrame(Byte code) {
  return code >= 0xC0 && code <= 0xCF && code != 0xC4 && code != 0xC8 && code != 0xCC;
}

}  // namespace

std::size_t JpegScanner::scan(Bytes bytes) {
  std::size_t used = 0;
  while (used < bytes.size() && !isDone() && !isBad()) {
    if (state_ == State::kScan) {
      const void* found = std::memchr(bytes.data() + used, kPrefix, bytes.size() - used);
      if (found == nullptr) return bytes.size();
      used = static_cast<std::size_t>(static_cast<const Byte*>(found) - bytes.data());
    }
    if (state_ == State::kSegment && segment_.size() >= kKept) {
      const std::size_t skipped = std::min(left_ - 1, bytes.size() - used);
      used += skipped;
      left_ -= skipped;
      if (used == bytes.size()) break;
    }
    take(bytes[used++]);
  }
  return used;
}

void JpegScanner::take(Byte byte) {
  switch (state_) {
    case State::kStart:
      state_ = byte == kPrefix ? State::kStartOfImage : State::kBad;
      break;
    case State::kStartOfImage:
      state_ = byte == kStartOfImage ? State::kMarker : State::kBad;
      break;
    case State::kMarker:
      state_ = byte == kPrefix ? State::kCode : State::kBad;
      break;
    case State::kCode:
      takeCode(byte);
      break;
    case State::kLength:
      left_ = static_cast<std::size_t>(byte) << 8;
      state_ = State::kLengthLow;
      break;
    case State::kLengthLow:
      left_ += byte;
      // The length counts its own two bytes.
      if (left_ < 2) {
        state_ = State::kBad;
        break;
      }
      left_ -= 2;
      segment_.clear();
      state_ = State::kSegment;
      if (left_ == 0) endSegment();
      break;
    case State::kSegment:
      if (segment_.size() < kKept) segment_.push_back(byte);
      if (--left_ == 0) endSegment();
      break;
    case State::kScan:
      if (byte == kPrefix) state_ = State::kScanCode;
      break;
    case State::kScanCode:
      // A zero makes the byte in front of it data; prefixes may be repeated.
      if (byte == 0 || isRestart(byte)) {
        state_ = State::kScan;
      } else if (byte != kPrefix) {
        takeCode(byte);
      }
      break;
    case State::kDone:
    case State::kBad:
      break;
  }
}

void JpegScanner::takeCode(Byte code) {
  if (code == kPrefix) return;
  code_ = code;
  if (code == kEndOfImage) {
    state_ = frame_ ? State::kDone : State::kBad;
  } else if (code == 0 || code == kStartOfImage) {
    state_ = State::kBad;
  } else {
    state_ = isRestart(code) ? State::kMarker : State::kLength;
  }
}

void JpegScanner::endSegment() {
  state_ = code_ == kStartOfScan ? State::kScan : State::kMarker;
  if (isStartOfFrame(code_) && segment_.size() >= 6) {
    frame_ = {segment_[3] << 8 | segment_[4], segment_[1] << 8 | segment_[2], segment_[5], segment_[0]};
  }
  if (code_ == kApplication14 && segment_.size() >= 12 && std::memcmp(segment_.data(), "Adobe", 5) == 0) {
    transform_ = segment_[11];
  }
}

}  // namespace quillpress::level3
