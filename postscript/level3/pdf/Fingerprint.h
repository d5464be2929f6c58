#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillpress::level3 {

// 128 bits that stand for a content: equal contents have equal ones, and different contents practically
// never.
struct Fingerprint {
  std::uint64_t high = 0;
  std::uint64_t low = 0;

  friend bool operator==(const Fingerprint&, const Fingerprint&) = default;
};

// Takes a content in pieces; how it is cut does not matter.
class Fingerprinter {
 public:
  void add(std::string_view bytes);
  Fingerprint finish() const;

 private:
  void mix(std::uint64_t word);

  std::uint64_t high_ = 0x9E3779B97F4A7C15U;
  std::uint64_t low_ = 0xC2B2AE3D27D4EB4FU;
  std::uint64_t length_ = 0;
  std::uint64_t partial_ = 0;  // bytes that do not fill a word yet, the first lowest
};

Fingerprint fingerprintOf(std::string_view bytes);

// The sixteen bytes.
std::string bytesOf(const Fingerprint& fingerprint);

struct FingerprintHash {
  std::size_t operator()(const Fingerprint& fingerprint) const {
    return static_cast<std::size_t>(fingerprint.low);
  }
};

}  // namespace quillpress::level3
