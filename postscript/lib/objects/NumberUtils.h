#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress {

class PostscriptObject;

// Pi as the converter has always used it. Kept: ten decimals, not the full double, which the last digits of
// angles and curves show (math/atan.ps).
inline constexpr double kPi = 3.1415926535;

// What decimal numbers are spelled with, whatever the locale.
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool isSign(char c) {
  return c == '+' || c == '-';
}

// The value of an integer or a real. Throws Ex for any other kind.
double toDouble(const PostscriptObject& object);

// Adds number x to number y in place. Throws Ex when y is no number, or x is none.
void addXtoY(const PostscriptObject& x, PostscriptObject& y);

// Truncates toward zero; beyond 32 bits the nearest bound, NaN gives 0, on every host alike.
std::int32_t truncateToInt32(double value);

// Two's complement arithmetic, never undefined.
std::int32_t wrappingAdd(std::int32_t a, std::int32_t b);
std::int32_t wrappingSubtract(std::int32_t a, std::int32_t b);
std::int32_t wrappingMultiply(std::int32_t a, std::int32_t b);

// The number as "%f" writes it: six decimals, always with a point, whatever the locale.
std::string realText(double value);

// An optional sign and decimal digits only; a lone sign is 0. Empty when the text is something else or
// lies outside 32 bits.
std::optional<std::int32_t> parseDecimalInteger(std::string_view text);

// "base#digits" with a base of one or two decimal digits. Values up to 2^32-1 wrap into 32 bits.
std::optional<std::int32_t> parseRadixInteger(std::string_view text);

// A decimal number that is used up whole, with a signed exponent if need be, within a double's range.
std::optional<double> parseReal(std::string_view text);

}  // namespace quillpress
