#pragma once

#include <span>
#include <string>

namespace quillpress {

// Appends a number as content text writes it. The number of decimals follows the magnitude; zeros at the
// end go, except from numbers of 10000 and more, which have no decimals. Infinity and NaN are written as 0.
void appendNumber(std::string& text, double value);

// The most bytes that a number takes: the largest double has 309 digits.
inline constexpr std::size_t kLongestNumber = 320;

// Appends numbers, separated by single blanks.
void appendNumbers(std::string& text, std::span<const double> numbers);

}  // namespace quillpress
