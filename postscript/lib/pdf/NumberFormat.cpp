#include "postscript/lib/pdf/NumberFormat.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace quillpress {

namespace {

constexpr double kNoDecimalsFrom = 10000;

int decimalsFor(double magnitude) {
  if (magnitude >= 1000) return 1;
  // Kept: the hundreds have as many decimals as the tens (NumberFormatTest.FromAHundredHasThreeDecimalsToo).
  if (magnitude >= 10) return 3;
  return magnitude >= 1 ? 4 : 5;
}

// The value times ten to the decimals, rounded, when there can be no doubt about the rounding: the product
// is off by far less than the distance that is kept from a tie. Otherwise -1.
std::int64_t clearlyRounded(double magnitude, int decimals) {
  static constexpr std::array<double, 6> kPowersOfTen{1, 1e1, 1e2, 1e3, 1e4, 1e5};
  const double scaled = magnitude * kPowersOfTen[static_cast<std::size_t>(decimals)];
  const auto whole = static_cast<std::int64_t>(scaled);
  const double fraction = scaled - static_cast<double>(whole);
  if (std::fabs(fraction - 0.5) < 1e-6) return -1;
  return fraction > 0.5 ? whole + 1 : whole;
}

// Writes a rounded value, scaled by ten to the decimals, without zeros at the end.
void appendScaled(std::string& text, bool negative, std::int64_t scaled, int decimals) {
  std::array<char, 24> buffer;
  char* const end = buffer.data() + buffer.size();
  char* position = end;
  while (decimals > 0 && scaled % 10 == 0) {
    scaled /= 10;
    --decimals;
  }
  const bool isZero = scaled == 0;
  if (decimals > 0) {
    for (; decimals > 0; --decimals) {
      *--position = static_cast<char>('0' + scaled % 10);
      scaled /= 10;
    }
    *--position = '.';
  }
  do {
    *--position = static_cast<char>('0' + scaled % 10);
    scaled /= 10;
  } while (scaled > 0);
  if (negative && !isZero) *--position = '-';
  text.append(position, static_cast<std::size_t>(end - position));
}

std::string_view withoutTrailingZeros(std::string_view digits) {
  while (digits.size() > 1 && digits.back() == '0') digits.remove_suffix(1);
  if (digits.back() == '.') digits.remove_suffix(1);
  return digits == "-0" ? "0" : digits;
}

}  // namespace

void appendNumber(std::string& text, double value) {
  std::array<char, kLongestNumber> buffer;
  char* const begin = buffer.data();
  char* const end = begin + buffer.size();
  const double magnitude = std::fabs(value);
  if (magnitude < kNoDecimalsFrom) {
    const int whole = static_cast<int>(value);
    if (whole == value) {  // most coordinates of print jobs; no decimals would be left of them anyway
      text.append(begin, std::to_chars(begin, end, whole).ptr);
      return;
    }
    const int decimals = decimalsFor(magnitude);
    const std::int64_t rounded = clearlyRounded(magnitude, decimals);
    if (rounded >= 0) {
      appendScaled(text, value < 0, rounded, decimals);
      return;
    }
    const auto result = std::to_chars(begin, end, value, std::chars_format::fixed, decimals);
    text.append(withoutTrailingZeros({begin, static_cast<std::size_t>(result.ptr - begin)}));
  } else if (std::isfinite(value)) {
    text.append(begin, std::to_chars(begin, end, value, std::chars_format::fixed, 0).ptr);
  } else {
    text.push_back('0');
  }
}

void appendNumbers(std::string& text, std::span<const double> numbers) {
  const char* separator = "";
  for (const double number : numbers) {
    text.append(separator);
    appendNumber(text, number);
    separator = " ";
  }
}

}  // namespace quillpress
