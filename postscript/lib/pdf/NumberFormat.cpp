#include "pdf/NumberFormat.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace quillpress {

namespace {

constexpr double kNoDecimalsFrom = 10000;

int decimalsFor(double magnitude) {
  if (magnitude >= 1000) return 1;
  if (magnitude >= 10) return 3;  // Kept: the hundreds have as many decimals as the tens
  return magnitude >= 1 ? 4 : 5;
}

std::string_view withoutTrailingZeros(std::string_view digits) {
  while (digits.size() > 1 && digits.back() == '0') digits.remove_suffix(1);
  if (digits.back() == '.') digits.remove_suffix(1);
  return digits == "-0" ? "0" : digits;
}

}  // namespace

void appendNumber(std::string& text, double value) {
  std::array<char, 320> buffer;  // the longest double has 309 digits
  char* const begin = buffer.data();
  char* const end = begin + buffer.size();
  const double magnitude = std::fabs(value);
  if (magnitude < kNoDecimalsFrom) {
    const int whole = static_cast<int>(value);
    if (whole == value) {  // most coordinates of print jobs; no decimals would be left of them anyway
      text.append(begin, std::to_chars(begin, end, whole).ptr);
      return;
    }
    const auto result = std::to_chars(begin, end, value, std::chars_format::fixed, decimalsFor(magnitude));
    text.append(withoutTrailingZeros({begin, static_cast<std::size_t>(result.ptr - begin)}));
  } else if (std::isfinite(value)) {
    text.append(begin, std::to_chars(begin, end, value, std::chars_format::fixed, 0).ptr);
  } else {
    text.push_back('0');
  }
}

}  // namespace quillpress
