#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

// Reads an input as a row of decisions, from its front. Past the end every decision is the first.
class Choices {
 public:
  explicit Choices(Input input) : rest_(input) {}

  [[nodiscard]] bool atEnd() const { return rest_.empty(); }

  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    const std::uint8_t value = rest_.front();
    rest_ = rest_.subspan(1);
    return value;
  }

  // A number from 0 to below the bound.
  // REQUIRES: 0 < bound <= 65536
  std::size_t below(std::size_t bound) {
    const std::size_t high = bound > 256 ? byte() : 0;
    return (high * 256 + byte()) % bound;
  }

  bool flag() { return (byte() & 1U) != 0; }

  // Any object of a kind whose every bit pattern is one.
  template <typename Number>
  Number number() {
    std::uint8_t bytes[sizeof(Number)];
    for (std::uint8_t& each : bytes) each = byte();
    Number value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  }

  template <typename Container>
  const auto& oneOf(const Container& container) {
    return container[below(std::size(container))];
  }

  // At most so many bytes.
  std::string bytes(std::size_t most) {
    const std::size_t length = std::min(most, rest_.size());
    std::string text(reinterpret_cast<const char*>(rest_.data()), length);
    rest_ = rest_.subspan(length);
    return text;
  }

  std::string remaining() { return bytes(rest_.size()); }

 private:
  Input rest_;
};

// Numbers that follow from a seed, for decisions that an input has no bytes for.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state_(seed * 2654435761U + 1) {}

  std::size_t below(std::size_t bound) {
    state_ ^= state_ << 13U;
    state_ ^= state_ >> 17U;
    state_ ^= state_ << 5U;
    return state_ % bound;
  }

 private:
  std::uint32_t state_;
};

}  // namespace quillpress::fuzz
