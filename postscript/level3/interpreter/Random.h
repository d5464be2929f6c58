#pragma once

#include <algorithm>
#include <cstdint>

namespace quillpress::level3 {

// The language's random numbers: the minimal standard generator of Park and Miller, so that a program that
// sets the seed draws the same picture everywhere.
class Random {
 public:
  // From 1 to 2^31 - 2.
  std::int64_t next() {
    state_ = kMultiplier * state_ % kModulus;
    return state_;
  }

  // Any number; the low 32 bits count, and those that the generator cannot stand on are moved into its range.
  void seed(std::int64_t seed) {
    const auto value = std::int64_t{static_cast<std::int32_t>(seed)};
    constexpr std::int64_t kLast = kModulus - 1;
    state_ = value < 1 ? -(value % kLast) + 1 : std::min(value, kLast);
  }

  [[nodiscard]] std::int64_t state() const { return state_; }

 private:
  static constexpr std::int64_t kMultiplier = 16807;
  static constexpr std::int64_t kModulus = 2147483647;

  std::int64_t state_ = 1;
};

}  // namespace quillpress::level3
