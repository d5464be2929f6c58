#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

// Whether numbers in binary tokens begin with their high byte or with their low one.
enum class ByteOrder { kHighFirst, kLowFirst };

inline constexpr ByteOrder kNativeOrder =
    std::endian::native == std::endian::big ? ByteOrder::kHighFirst : ByteOrder::kLowFirst;

// REQUIRES: at most 4 bytes
inline std::uint32_t unsignedOf(std::span<const std::uint8_t> bytes, ByteOrder order) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    value = (value << 8) | bytes[order == ByteOrder::kHighFirst ? i : bytes.size() - 1 - i];
  }
  return value;
}

// The sign of a number of 1, 2 or 4 bytes.
inline std::int32_t signedOf(std::uint32_t value, std::size_t bytes) {
  const unsigned shift = static_cast<unsigned>(32 - 8 * bytes);
  return static_cast<std::int32_t>(value << shift) >> shift;
}

inline Object realOfBits(std::uint32_t bits) {
  return Object::real(std::bit_cast<float>(bits));
}

// A fixed-point number with `scale` bits behind the point; without any it is an integer.
inline Object fixedPointOf(std::int32_t value, unsigned scale) {
  if (scale == 0) return Object::integer(value);
  return Object::real(static_cast<float>(std::ldexp(value, -static_cast<int>(scale))));
}

}  // namespace quillpress::level3
