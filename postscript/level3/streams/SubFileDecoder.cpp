#include "postscript/level3/streams/SubFileDecoder.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

namespace {

void copy(Bytes from, std::span<Byte> to) {
  if (!from.empty()) std::memcpy(to.data(), from.data(), from.size());
}

std::vector<std::size_t> shorterMatches(const std::vector<Byte>& text) {
  std::vector<std::size_t> shorter(text.size() + 1, 0);
  std::size_t match = 0;
  for (std::size_t length = 2; length <= text.size(); ++length) {
    while (match > 0 && text[match] != text[length - 1]) match = shorter[match];
    if (text[match] == text[length - 1]) ++match;
    shorter[length] = match;
  }
  return shorter;
}

}  // namespace

SubFileDecoder::SubFileDecoder(SourcePointer source, std::uint64_t count, std::string_view endText,
                               FilterClosing closing)
    : Decoder(std::move(source), closing),
      count_(count),
      endText_(endText.begin(), endText.end()),
      shorterMatch_(shorterMatches(endText_)) {}

Decoder::Progress SubFileDecoder::decode(Bytes input, std::span<Byte> output) {
  if (endText_.empty()) return decodeCounted(input, output);
  return count_ == 0 ? decodeWithholding(input, output) : decodePassing(input, output);
}

Decoder::Progress SubFileDecoder::decodeCounted(Bytes input, std::span<Byte> output) {
  std::size_t size = std::min(input.size(), output.size());
  if (count_ > 0) size = static_cast<std::size_t>(std::min<std::uint64_t>(size, count_));
  copy(input.first(size), output);
  if (count_ > 0) {
    count_ -= size;
    if (count_ == 0) finish();
  }
  return {size, size};
}

// Copies up to the next byte that may begin the text.
void SubFileDecoder::skipTo(Byte first, Bytes input, std::span<Byte> output, Progress& step) const {
  const std::size_t size = std::min(input.size() - step.consumed, output.size() - step.produced);
  if (size == 0) return;
  const Byte* from = input.data() + step.consumed;
  const void* found = std::memchr(from, first, size);
  const std::size_t plain =
      found == nullptr ? size : static_cast<std::size_t>(static_cast<const Byte*>(found) - from);
  copy({from, plain}, output.subspan(step.produced));
  step.consumed += plain;
  step.produced += plain;
}

Decoder::Progress SubFileDecoder::decodePassing(Bytes input, std::span<Byte> output) {
  Progress step;
  while (isOpen()) {
    if (matched_ == 0) skipTo(endText_[0], input, output, step);
    if (step.consumed == input.size() || step.produced == output.size()) break;
    const Byte byte = input[step.consumed];
    while (!fallBack(byte)) continue;
    if (byte == endText_[matched_]) ++matched_;
    output[step.produced++] = byte;
    ++step.consumed;
    if (matched_ < endText_.size()) continue;
    matched_ = 0;
    if (--count_ == 0) finish();
  }
  heldFrom_ = heldTo_ = 0;
  return step;
}

Decoder::Progress SubFileDecoder::decodeWithholding(Bytes input, std::span<Byte> output) {
  Progress step;
  while (isOpen()) {
    step.produced += deliverHeld(output.subspan(step.produced));
    if (heldFrom_ < heldTo_) break;
    if (matched_ == 0) skipTo(endText_[0], input, output, step);
    if (step.consumed == input.size()) break;
    const Byte byte = input[step.consumed];
    if (!fallBack(byte)) continue;
    if (byte != endText_[matched_]) {
      // Without a match, so the byte is data itself.
      if (step.produced == output.size()) break;
      output[step.produced++] = byte;
    } else if (++matched_ == endText_.size()) {
      finish();
    }
    ++step.consumed;
  }
  return step;
}

// Makes a match shorter that `byte` does not go on with. True when it has come to its end: the byte goes on
// with the match, or there is none.
bool SubFileDecoder::fallBack(Byte byte) {
  if (matched_ == 0 || byte == endText_[matched_]) return true;
  const std::size_t shorter = shorterMatch_[matched_];
  heldFrom_ = 0;
  heldTo_ = matched_ - shorter;
  matched_ = shorter;
  return false;
}

std::size_t SubFileDecoder::deliverHeld(std::span<Byte> output) {
  const std::size_t size = std::min(heldTo_ - heldFrom_, output.size());
  copy(Bytes(endText_).subspan(heldFrom_, size), output);
  heldFrom_ += size;
  return size;
}

// The beginning of a text that has not come to its end is data. (Of what was passed on, nothing is held.)
std::size_t SubFileDecoder::decodeEnd(std::span<Byte> output) {
  if (count_ == 0 && matched_ > 0) {
    heldFrom_ = 0;
    heldTo_ = matched_;
    matched_ = 0;
  }
  const std::size_t size = deliverHeld(output);
  if (heldFrom_ == heldTo_) finish();
  return size;
}

}  // namespace quillpress::level3
