#include "postscript/level3/streams/RunLengthFilter.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

namespace {

constexpr Byte kRunsEndOfData = 128;
constexpr std::size_t kLongest = 128;

// Among literals two equal bytes cost as much as they do as a run, which would end the literals.
std::size_t shortestRun(bool afterLiterals) {
  return afterLiterals ? 3 : 2;
}

}  // namespace

void RunLengthDecoder::takeLength(Byte length) {
  if (length == kRunsEndOfData) {
    finish();
  } else if (length < kRunsEndOfData) {
    left_ = length + std::size_t{1};
    expects_ = Expects::kLiterals;
  } else {
    left_ = std::size_t{257} - length;
    expects_ = Expects::kRepeatedByte;
  }
}

Decoder::Progress RunLengthDecoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  while (isOpen()) {
    const std::size_t room = std::min(left_, output.size() - step.produced);
    switch (expects_) {
      case Expects::kLength:
        if (step.consumed == input.size()) return step;
        takeLength(input[step.consumed++]);
        break;
      case Expects::kRepeatedByte:
        if (step.consumed == input.size()) return step;
        repeated_ = input[step.consumed++];
        expects_ = Expects::kRoom;
        break;
      case Expects::kRoom:
        if (room == 0) return step;
        std::memset(output.data() + step.produced, repeated_, room);
        step.produced += room;
        left_ -= room;
        if (left_ == 0) expects_ = Expects::kLength;
        break;
      case Expects::kLiterals: {
        const std::size_t count = std::min(room, input.size() - step.consumed);
        if (count == 0) return step;
        std::memcpy(output.data() + step.produced, input.data() + step.consumed, count);
        step.produced += count;
        step.consumed += count;
        left_ -= count;
        if (left_ == 0) expects_ = Expects::kLength;
        break;
      }
    }
  }
  return step;
}

void RunLengthEncoder::encode(Bytes bytes) {
  for (const Byte byte : bytes) takeByte(byte);
}

void RunLengthEncoder::takeByte(Byte byte) {
  if (repeats_ > 0 && byte == repeated_) {
    ++repeats_;
    if (repeats_ == kLongest) flushRun();
  } else {
    if (repeats_ >= shortestRun(!literals_.empty())) {
      flushRun();
    } else {
      literals_.insert(literals_.end(), repeats_, repeated_);
    }
    repeated_ = byte;
    repeats_ = 1;
    // A run of two at the most joins them, and 128 is as many as one length can stand for.
    if (literals_.size() >= kLongest) flushLiterals();
  }
  if (recordSize_ != 0 && --leftInRecord_ == 0) {
    flushRun();
    leftInRecord_ = recordSize_;
  }
}

void RunLengthEncoder::flushLiterals() {
  Bytes rest = literals_;
  while (!rest.empty()) {
    const Bytes piece = rest.first(std::min(rest.size(), kLongest));
    emit(static_cast<Byte>(piece.size() - 1));
    emit(piece);
    rest = rest.subspan(piece.size());
  }
  literals_.clear();
}

// Writes all that is held back.
void RunLengthEncoder::flushRun() {
  if (repeats_ < shortestRun(!literals_.empty())) {
    literals_.insert(literals_.end(), repeats_, repeated_);
    repeats_ = 0;
  }
  flushLiterals();
  if (repeats_ > 0) {
    emit(static_cast<Byte>(257 - repeats_));
    emit(repeated_);
  }
  repeats_ = 0;
}

void RunLengthEncoder::encodeEnd() {
  flushRun();
  emit(kRunsEndOfData);
}

}  // namespace quillpress::level3
