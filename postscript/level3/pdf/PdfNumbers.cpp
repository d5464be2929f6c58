#include "postscript/level3/pdf/PdfNumbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillpress::level3 {

namespace {

// Readers keep reals in 32 bits, so nothing beyond tells two places apart.
constexpr double kGreatest = 2'000'000'000;

}  // namespace

void appendInteger(std::string& text, std::int64_t value) {
  appendFixed(text, value, 0);
}

// Most of a page's text is numbers, so they are written from the last digit to the first at one go.
void appendFixed(std::string& text, std::int64_t units, int decimals) {
  std::array<char, 24> digits;
  char* const end = digits.data() + digits.size();
  char* first = end;
  auto rest = units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
  while (decimals > 0 && rest % 10 == 0) {
    rest /= 10;
    --decimals;
  }
  if (decimals > 0) {
    for (; decimals > 0; --decimals, rest /= 10) *--first = static_cast<char>('0' + rest % 10);
    *--first = '.';
  }
  if (rest != 0 || first == end) {
    do {
      *--first = static_cast<char>('0' + rest % 10);
      rest /= 10;
    } while (rest != 0);
  }
  if (units < 0) *--first = '-';
  text.append(first, static_cast<std::size_t>(end - first));
}

std::int64_t toFixed(double value, int decimals) {
  if (std::isnan(value)) return 0;
  return std::llround(std::clamp(value, -kGreatest, kGreatest) * powerOfTen(decimals));
}

void appendNumber(std::string& text, double value, int decimals) {
  appendFixed(text, toFixed(value, decimals), decimals);
}

}  // namespace quillpress::level3
