#include "postscript/level3/pdf/Fingerprint.h"

#include <bit>
#include <cstring>

namespace quillpress::level3 {

namespace {

constexpr std::uint64_t kHighFactor = 0xFF51AFD7ED558CCDU;
constexpr std::uint64_t kLowFactor = 0xC4CEB9FE1A85EC53U;

std::uint64_t wordAt(const char* bytes) {
  std::uint64_t word = 0;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(&word, bytes, sizeof word);
    return word;
  }
  for (int index = 0; index < 8; ++index) {
    word |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[index])) << (8 * index);
  }
  return word;
}

std::uint64_t scrambled(std::uint64_t value) {
  value = (value ^ (value >> 33)) * kHighFactor;
  value = (value ^ (value >> 29)) * kLowFactor;
  return value ^ (value >> 32);
}

}  // namespace

// Two sums with different factors and turns; each word changes both.
void Fingerprinter::mix(std::uint64_t word) {
  high_ = std::rotl((high_ ^ word) * kHighFactor, 31) + low_;
  low_ = std::rotl((low_ + word) * kLowFactor, 27) ^ high_;
}

void Fingerprinter::add(std::string_view bytes) {
  while (length_ % 8 != 0 && !bytes.empty()) {
    partial_ |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes.front())) << (8 * (length_ % 8));
    bytes.remove_prefix(1);
    if (++length_ % 8 == 0) {
      mix(partial_);
      partial_ = 0;
    }
  }
  const std::size_t whole = bytes.size() / 8 * 8;
  for (std::size_t place = 0; place < whole; place += 8) mix(wordAt(bytes.data() + place));
  length_ += whole;
  bytes.remove_prefix(whole);
  for (const char byte : bytes) {
    partial_ |= static_cast<std::uint64_t>(static_cast<unsigned char>(byte)) << (8 * (length_ % 8));
    ++length_;
  }
}

Fingerprint Fingerprinter::finish() const {
  Fingerprinter last(*this);
  last.mix(partial_);
  last.mix(length_);
  return {scrambled(last.high_), scrambled(last.low_ ^ std::rotl(last.high_, 17))};
}

Fingerprint fingerprintOf(std::string_view bytes) {
  Fingerprinter fingerprinter;
  fingerprinter.add(bytes);
  return fingerprinter.finish();
}

std::string bytesOf(const Fingerprint& fingerprint) {
  std::string bytes;
  for (const std::uint64_t half : {fingerprint.high, fingerprint.low}) {
    for (int shift = 56; shift >= 0; shift -= 8) bytes += static_cast<char>(half >> shift & 0xFF);
  }
  return bytes;
}

}  // namespace quillpress::level3
