#include "postscript/level3/streams/AsciiHexFilter.h"

#include <array>

#include "postscript/level3/streams/CharacterClass.h"

namespace quillpress::level3 {

namespace {

constexpr Byte kHexEndOfData = '>';
constexpr int kDigitsInLine = 64;

}  // namespace

Decoder::Progress AsciiHexDecoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  for (const Byte byte : input) {
    const int digit = hexDigit(byte);
    if (digit >= 0) {
      if (firstDigit_ == kNone) {
        firstDigit_ = digit;
      } else {
        if (step.produced == output.size()) return step;
        output[step.produced++] = static_cast<Byte>(firstDigit_ << 4 | digit);
        firstDigit_ = kNone;
      }
    } else if (byte == kHexEndOfData) {
      // The marker waits for room for the byte whose second digit it stands for.
      if (firstDigit_ != kNone && step.produced == output.size()) return step;
      step.produced += decodeEnd(output.subspan(step.produced));
      ++step.consumed;
      return step;
    } else if (!isWhiteSpace(byte)) {
      fail();
      return step;
    }
    ++step.consumed;
  }
  return step;
}

std::size_t AsciiHexDecoder::decodeEnd(std::span<Byte> output) {
  finish();
  if (firstDigit_ == kNone) return 0;
  output[0] = static_cast<Byte>(firstDigit_ << 4);
  firstDigit_ = kNone;
  return 1;
}

void AsciiHexEncoder::encode(Bytes bytes) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const Byte byte : bytes) {
    if (column_ == kDigitsInLine) {
      emit('\n');
      column_ = 0;
    }
    const std::array pair = {static_cast<Byte>(kDigits[byte >> 4]), static_cast<Byte>(kDigits[byte & 15])};
    emit(pair);
    column_ += 2;
  }
}

}  // namespace quillpress::level3
