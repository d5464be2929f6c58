#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quillpress::level3 {

// Numbers as short as PDF allows: no zero before the point, none at the end, no "-0".

// The number `units` / 10^decimals.
void appendFixed(std::string& text, std::int64_t units, int decimals);

// Rounded to `decimals` (at most 9) places. What is no number becomes 0, and what is out of range its bound.
void appendNumber(std::string& text, double value, int decimals);

void appendInteger(std::string& text, std::int64_t value);

// 10 to a power up to 9.
inline double powerOfTen(int exponent) {
  constexpr std::array<double, 10> kPowers{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  return kPowers[static_cast<std::size_t>(exponent)];
}

// `value` in units of 10^-decimals, rounded.
std::int64_t toFixed(double value, int decimals);

}  // namespace quillpress::level3
