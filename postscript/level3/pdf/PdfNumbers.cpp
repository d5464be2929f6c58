#include "postscript/level3/pdf/PdfNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace quillpress::level3 {

namespace {

constexpr std::array<std::int64_t, 10> kWholePowers{
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};

// Readers keep reals in 32 bits, so nothing beyond tells two places apart.
constexpr double kGreatest = 2'000'000'000;

}  // namespace

void appendInteger(std::string& text, std::int64_t value) {
  std::array<char, 24> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  text.append(digits.data(), end);
}

void appendFixed(std::string& text, std::int64_t units, int decimals) {
  if (units < 0) {
    text += '-';
    units = -units;
  }
  const std::int64_t power = kWholePowers[static_cast<std::size_t>(decimals)];
  const std::int64_t whole = units / power;
  std::int64_t rest = units % power;
  if (rest == 0) {
    appendInteger(text, whole);
    return;
  }
  if (whole != 0) appendInteger(text, whole);
  while (rest % 10 == 0) {
    rest /= 10;
    --decimals;
  }
  text += '.';
  const std::size_t first = text.size();
  text.resize(first + static_cast<std::size_t>(decimals));
  for (std::size_t place = text.size(); place > first; rest /= 10)
    text[--place] = static_cast<char>('0' + rest % 10);
}

std::int64_t toFixed(double value, int decimals) {
  if (std::isnan(value)) return 0;
  return std::llround(std::clamp(value, -kGreatest, kGreatest) * powerOfTen(decimals));
}

void appendNumber(std::string& text, double value, int decimals) {
  appendFixed(text, toFixed(value, decimals), decimals);
}

}  // namespace quillpress::level3
