#include "postscript/level3/scanner/Number.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "postscript/level3/objects/ErrorName.h"
#include "postscript/level3/scanner/CharacterTable.h"

namespace quillpress::level3 {

namespace {

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

std::size_t countDigits(std::string_view text, std::size_t start) {
  std::size_t end = start;
  while (end < text.size() && isDigit(text[end])) ++end;
  return end - start;
}

Object finiteReal(double value) {
  const auto real = static_cast<float>(value);
  if (!std::isfinite(real)) raise(ErrorName::kLimitCheck);
  return Object::real(real);
}

// `text` has been seen to be a number; a plus sign is not from_chars's.
Object readReal(std::string_view text) {
  if (text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    // Too large and too small look alike; a negative exponent tells them apart.
    const std::size_t exponent = text.find_first_of("eE");
    const bool isTiny = exponent != std::string_view::npos && text[exponent + 1] == '-';
    if (!isTiny) raise(ErrorName::kLimitCheck);
    value = 0;
  }
  return finiteReal(value);
}

Object readInteger(std::string_view text) {
  std::string_view digits = text;
  if (digits.front() == '+') digits.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return error == std::errc() ? Object::integer(value) : readReal(text);
}

// BASE#DIGITS, `hash` being the place of the "#".
std::optional<Object> readRadix(std::string_view text, std::size_t hash) {
  if (hash > 2 || hash + 1 == text.size()) return std::nullopt;
  unsigned base = 0;
  for (const char digit : text.substr(0, hash))
    base = base * 10 + kDigitValues[static_cast<unsigned char>(digit)];
  if (base < 2 || base > 36) return std::nullopt;
  std::uint64_t value = 0;
  bool overflows = false;
  for (const char character : text.substr(hash + 1)) {
    const std::uint8_t digit = kDigitValues[static_cast<unsigned char>(character)];
    if (digit >= base) return std::nullopt;
    overflows = overflows || value > (std::numeric_limits<std::uint64_t>::max() - digit) / base;
    value = value * base + digit;
  }
  if (overflows) raise(ErrorName::kLimitCheck);
  return Object::integer(static_cast<std::int64_t>(value));
}

// What follows the digits before the point: [. digits] [e [sign] digits], to the end of the text.
bool isRealTail(std::string_view text, std::size_t place, std::size_t digits) {
  if (place < text.size() && text[place] == '.') {
    const std::size_t decimals = countDigits(text, place + 1);
    digits += decimals;
    place += 1 + decimals;
  }
  if (digits == 0) return false;
  if (place == text.size()) return true;
  if (text[place] != 'e' && text[place] != 'E') return false;
  ++place;
  if (place < text.size() && (text[place] == '+' || text[place] == '-')) ++place;
  const std::size_t exponent = countDigits(text, place);
  return exponent > 0 && place + exponent == text.size();
}

}  // namespace

std::optional<Object> parseNumber(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const std::size_t start = text.front() == '+' || text.front() == '-' ? 1 : 0;
  const std::size_t digits = countDigits(text, start);
  const std::size_t place = start + digits;
  if (place == text.size()) return digits > 0 ? std::optional(readInteger(text)) : std::nullopt;
  if (text[place] == '#') return start == 0 && digits > 0 ? readRadix(text, place) : std::nullopt;
  if (!isRealTail(text, place, digits)) return std::nullopt;
  return readReal(text);
}

}  // namespace quillpress::level3
