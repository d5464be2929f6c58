#pragma once

#include <cstdint>
#include <string>

namespace quillpress::level3 {

// Numbers as short as PDF allows: no zero before the point, none at the end, no "-0".

// The number `units` / 10^decimals.
void appendFixed(std::string& text, std::int64_t units, int decimals);

// Rounded to `decimals` (at most 9) places. What is no number becomes 0, and what is out of range its bound.
void appendNumber(std::string& text, double value, int decimals);

void appendInteger(std::string& text, std::int64_t value);

// `value` in units of 10^-decimals, rounded.
std::int64_t toFixed(double value, int decimals);

}  // namespace quillpress::level3
