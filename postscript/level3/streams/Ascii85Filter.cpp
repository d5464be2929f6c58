#include "postscript/level3/streams/Ascii85Filter.h"

#include "postscript/level3/streams/CharacterClass.h"

namespace quillpress::level3 {

namespace {

constexpr int kGroupDigits = 5;
constexpr int kGroupBytes = 4;
constexpr std::size_t kLineLength = 75;

constexpr bool isDigit(Byte byte) {
  return byte >= '!' && byte <= 'u';
}

}  // namespace

// Whole groups without white space or marker: nearly all of the data. True when something was decoded.
bool Ascii85Decoder::decodeGroups(Bytes input, std::span<Byte> output, Progress& step) {
  const Progress start = step;
  while (input.size() - step.consumed >= kGroupDigits && output.size() - step.produced >= kGroupBytes) {
    const Byte* digits = input.data() + step.consumed;
    std::uint64_t group = 0;
    for (int i = 0; i < kGroupDigits; ++i) {
      if (!isDigit(digits[i])) return step.consumed != start.consumed;
      group = group * 85 + (digits[i] - std::uint32_t{'!'});
    }
    if (group > 0xFFFFFFFF) return step.consumed != start.consumed;
    for (int shift = 24; shift >= 0; shift -= 8) {
      output[step.produced++] = static_cast<Byte>(group >> shift);
    }
    step.consumed += kGroupDigits;
  }
  return step.consumed != start.consumed;
}

Decoder::Progress Ascii85Decoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  while (step.consumed < input.size() && isOpen()) {
    if (digits_ == 0 && !sawTilde_ && decodeGroups(input, output, step)) continue;
    if (!takeByte(input[step.consumed], output, step)) break;
    ++step.consumed;
  }
  return step;
}

// False when the byte stays unread: it is bad, or there is no room for what it completes.
bool Ascii85Decoder::takeByte(Byte byte, std::span<Byte> output, Progress& step) {
  const std::size_t room = output.size() - step.produced;
  if (isWhiteSpace(byte)) return true;
  if (sawTilde_) {
    if (byte != '>') {
      fail();
      return false;
    }
    if (digits_ > 0 && room < kGroupBytes) return false;
    sawTilde_ = false;
    step.produced += decodeEnd(output.subspan(step.produced));
    return !hasFailed();
  }
  if (byte == '~') {
    sawTilde_ = true;
    return true;
  }
  if (byte == 'z' && digits_ == 0) {
    if (room < kGroupBytes) return false;
    group_ = 0;
    step.produced += deliverGroup(output.subspan(step.produced), kGroupBytes);
    return true;
  }
  if (!isDigit(byte)) {
    fail();
    return false;
  }
  const std::uint64_t group = group_ * 85 + (byte - std::uint32_t{'!'});
  if (digits_ + 1 == kGroupDigits) {
    if (room < kGroupBytes) return false;
    if (group > 0xFFFFFFFF) {
      fail();
      return false;
    }
    group_ = group;
    step.produced += deliverGroup(output.subspan(step.produced), kGroupBytes);
    return true;
  }
  group_ = group;
  ++digits_;
  return true;
}

std::size_t Ascii85Decoder::deliverGroup(std::span<Byte> output, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    output[static_cast<std::size_t>(i)] = static_cast<Byte>(group_ >> (24 - 8 * i));
  }
  group_ = 0;
  digits_ = 0;
  return static_cast<std::size_t>(bytes);
}

// n digits of the last group stand for n - 1 bytes; the digits that are missing count as the highest.
std::size_t Ascii85Decoder::decodeEnd(std::span<Byte> output) {
  if (digits_ == 1 || sawTilde_) {
    fail();
    return 0;
  }
  if (digits_ == 0) {
    finish();
    return 0;
  }
  for (int i = digits_; i < kGroupDigits; ++i) group_ = group_ * 85 + 84;
  if (group_ > 0xFFFFFFFF) {
    fail();
    return 0;
  }
  finish();
  return deliverGroup(output, digits_ - 1);
}

void Ascii85Encoder::encode(Bytes bytes) {
  for (const Byte byte : bytes) {
    group_ = group_ << 8 | byte;
    if (++bytes_ < kGroupBytes) continue;
    emitGroup(group_, kGroupDigits);
    group_ = 0;
    bytes_ = 0;
  }
}

void Ascii85Encoder::emitGroup(std::uint32_t group, int digits) {
  if (group == 0 && digits == kGroupDigits) {
    emitOnLine(bytesOf("z"));
    return;
  }
  std::array<Byte, kGroupDigits> text{};
  for (std::size_t i = kGroupDigits; i-- > 0;) {
    text[i] = static_cast<Byte>('!' + group % 85);
    group /= 85;
  }
  emitOnLine(Bytes(text).first(static_cast<std::size_t>(digits)));
}

void Ascii85Encoder::emitOnLine(Bytes bytes) {
  if (column_ + bytes.size() > kLineLength) {
    emit('\n');
    column_ = 0;
  }
  emit(bytes);
  column_ += bytes.size();
}

void Ascii85Encoder::encodeEnd() {
  if (bytes_ > 0) emitGroup(group_ << (8 * (kGroupBytes - bytes_)), bytes_ + 1);
  emit(bytesOf("~>"));
}

}  // namespace quillpress::level3
