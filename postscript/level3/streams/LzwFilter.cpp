#include "postscript/level3/streams/LzwFilter.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillpress::level3 {

namespace {

constexpr int kLongestCode = 12;
constexpr unsigned kNone = LzwCodes::kLimit;
constexpr std::size_t kHashSize = 16384;

std::size_t hashPlace(std::uint32_t key) {
  return (key * 2654435761U) >> 18;
}

}  // namespace

int LzwCodes::lengthBefore(unsigned next) const {
  return std::min(kLongestCode, static_cast<int>(std::bit_width(next + early_)));
}

LzwDecoder::LzwDecoder(SourcePointer source, const LzwParameters& parameters, FilterClosing closing)
    : Decoder(std::move(source), closing),
      codes_(parameters),
      lowBitFirst_(parameters.lowBitFirst),
      table_(LzwCodes::kLimit) {
  for (unsigned unit = 0; unit < codes_.clear(); ++unit) {
    table_[unit] = {0, 1, static_cast<Byte>(unit), static_cast<Byte>(unit)};
  }
  clearTable();
}

void LzwDecoder::clearTable() {
  next_ = codes_.first();
  codeLength_ = codes_.lengthBefore(next_);
  previous_ = kNone;
}

Decoder::Progress LzwDecoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  while (isOpen()) {
    const std::size_t held = string_.size() - stringStart_;
    const std::size_t count = std::min(held, output.size() - step.produced);
    if (count > 0) std::memcpy(output.data() + step.produced, string_.data() + stringStart_, count);
    stringStart_ += count;
    step.produced += count;
    if (count < held || !fillBits(input, step.consumed)) break;
    interpret(takeCode());
  }
  return step;
}

// True when there are bits for a code.
bool LzwDecoder::fillBits(Bytes input, std::size_t& consumed) {
  while (bitCount_ < codeLength_) {
    if (consumed == input.size()) return false;
    const std::uint32_t byte = input[consumed++];
    bits_ = lowBitFirst_ ? bits_ | byte << bitCount_ : bits_ << 8 | byte;
    bitCount_ += 8;
  }
  return true;
}

unsigned LzwDecoder::takeCode() {
  const std::uint32_t mask = (1U << codeLength_) - 1;
  bitCount_ -= codeLength_;
  if (!lowBitFirst_) return bits_ >> bitCount_ & mask;
  const unsigned code = bits_ & mask;
  bits_ >>= codeLength_;
  return code;
}

void LzwDecoder::interpret(unsigned code) {
  if (code == codes_.clear()) {
    clearTable();
  } else if (code == codes_.endOfData()) {
    finish();
  } else if (code > next_ || (code == next_ && previous_ == kNone)) {
    fail();
  } else if (previous_ == kNone) {
    deliver(code);
    previous_ = code;
  } else {
    // A code that is not yet in the table is the previous string and its own first unit again.
    const Byte first = table_[code == next_ ? previous_ : code].first;
    if (next_ < LzwCodes::kLimit) {
      const Entry& prefix = table_[previous_];
      table_[next_] = {static_cast<std::uint16_t>(previous_), static_cast<std::uint16_t>(prefix.length + 1),
                       first, prefix.first};
      ++next_;
      codeLength_ = codes_.lengthBefore(next_);
    }
    deliver(code);
    previous_ = code;
  }
}

void LzwDecoder::deliver(unsigned code) {
  stringStart_ = string_.size() - table_[code].length;
  for (std::size_t place = string_.size(); place-- > stringStart_;) {
    string_[place] = table_[code].last;
    code = table_[code].prefix;
  }
}

LzwEncoder::LzwEncoder(SinkPointer target, const LzwParameters& parameters, FilterClosing closing)
    : Encoder(std::move(target), closing),
      codes_(parameters),
      lowBitFirst_(parameters.lowBitFirst),
      unitMask_(static_cast<Byte>(codes_.clear() - 1)),
      table_(kHashSize) {
  next_ = codes_.first();
}

void LzwEncoder::clearTable() {
  std::fill(table_.begin(), table_.end(), 0);
  next_ = codes_.first();
}

void LzwEncoder::emitCode(unsigned code) {
  // The decoder's table is one string behind.
  const int length = codes_.lengthBefore(next_ - 1);
  bits_ = lowBitFirst_ ? bits_ | code << bitCount_ : bits_ << length | code;
  bitCount_ += length;
  while (bitCount_ >= 8) {
    bitCount_ -= 8;
    emit(static_cast<Byte>(lowBitFirst_ ? bits_ : bits_ >> bitCount_));
    if (lowBitFirst_) bits_ >>= 8;
  }
}

void LzwEncoder::encode(Bytes bytes) {
  for (const Byte unit : bytes) takeUnit(unit & unitMask_);
}

void LzwEncoder::takeUnit(Byte unit) {
  if (string_ == kNone) {
    emitCode(codes_.clear());
    string_ = unit;
    return;
  }
  const std::uint32_t key = string_ << 8 | unit;
  std::size_t place = hashPlace(key);
  while (table_[place] != 0) {
    if (table_[place] >> 16 == key + 1U) {
      string_ = static_cast<unsigned>(table_[place] & 0xFFFF);
      return;
    }
    place = (place + 1) % kHashSize;
  }
  emitCode(string_);
  table_[place] = std::uint64_t{key + 1U} << 16 | next_;
  ++next_;
  // One code early: decoders differ in what they do with a table that is full.
  if (next_ == LzwCodes::kLimit - 1) {
    emitCode(codes_.clear());
    clearTable();
  }
  string_ = unit;
}

void LzwEncoder::encodeEnd() {
  if (string_ == kNone) {
    emitCode(codes_.clear());
  } else {
    emitCode(string_);
    ++next_;
  }
  emitCode(codes_.endOfData());
  if (bitCount_ > 0) emit(static_cast<Byte>(lowBitFirst_ ? bits_ : bits_ << (8 - bitCount_)));
}

}  // namespace quillpress::level3
