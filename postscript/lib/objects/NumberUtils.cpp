#include "postscript/lib/objects/NumberUtils.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/IntegerObject.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {

namespace {

// The texts are converted in 64 bits first, so that a value beyond 32 bits is seen and not wrapped.
constexpr std::int64_t kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kInt32Max = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kUint32Max = std::numeric_limits<std::uint32_t>::max();

// The conversion understands bases 2 to 36, and 0 for the prefixes of C. It stops at a zero byte, which
// then counts as unused text.
std::optional<std::int32_t> parseInBase(std::string_view digits, int base) {
  if (base == 1 || base > 36) return std::nullopt;
  const std::string text(digits);
  char* end = nullptr;
  const long long value = std::strtoll(text.c_str(), &end, base);
  const bool usedUp = end == text.c_str() + text.size();
  if (!usedUp || value < kInt32Min || value > kUint32Max) return std::nullopt;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

}  // namespace

// By hand, and not by a virtual operation of the objects: it stands in the road of every coordinate.
double toDouble(const PostscriptObject& object) {
  if (const auto* real = as<RealObject>(&object)) return real->value;
  if (const auto* integer = as<IntegerObject>(&object)) return integer->value;
  THROW_EX("Unsupported number type");
}

// The sum takes the kind of y, which is the control value of a loop: its kind was settled when the loop
// began.
void addXtoY(const PostscriptObject& x, PostscriptObject& y) {
  if (auto* integer = as<IntegerObject>(&y)) {
    integer->add(x);
  } else if (auto* real = as<RealObject>(&y)) {
    real->add(x);
  } else {
    THROW_EX("Unsupported type in addXtoY");
  }
}

// A conversion outside the range is undefined, and processors differ in what they give: some a bound,
// some the most negative number for anything. Jobs must come out the same everywhere.
std::int32_t truncateToInt32(double value) {
  if (std::isnan(value)) return 0;
  if (value <= static_cast<double>(kInt32Min)) return static_cast<std::int32_t>(kInt32Min);
  if (value >= static_cast<double>(kInt32Max)) return static_cast<std::int32_t>(kInt32Max);
  return static_cast<std::int32_t>(value);
}

// Overflow of signed numbers is undefined; that of unsigned ones is the wrapping that is wanted here.
std::int32_t wrappingAdd(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t wrappingSubtract(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

std::int32_t wrappingMultiply(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

std::string realText(double value) {
  if (std::isnan(value)) return "nan";  // hosts differ on the sign of what 0 0 div gives
  std::array<char, 400> buffer{};       // the longest double has 309 digits before the point
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6);
  return {buffer.data(), result.ptr};
}

// Stops at the first value that cannot fit, so that the digits of a hostile token never overflow the 64
// bits. The bound lets one more pass, for the most negative number.
std::optional<std::int32_t> parseDecimalInteger(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const bool negative = text.front() == '-';
  if (isSign(text.front())) text.remove_prefix(1);
  std::int64_t value = 0;
  for (const char c : text) {
    if (!isDigit(c)) return std::nullopt;
    value = value * 10 + (c - '0');
    if (value > kInt32Max + 1) return std::nullopt;
  }
  if (negative) value = -value;
  if (value > kInt32Max) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

// Both places of the sign may hold: in 1#2#3 a base of one digit fails, and one of two digits is not
// there.
std::optional<std::int32_t> parseRadixInteger(std::string_view text) {
  if (text.size() > 2 && text[1] == '#' && isDigit(text[0])) {
    if (const auto value = parseInBase(text.substr(2), text[0] - '0')) return value;
  }
  if (text.size() > 3 && text[2] == '#' && isDigit(text[0]) && isDigit(text[1])) {
    return parseInBase(text.substr(3), (text[0] - '0') * 10 + (text[1] - '0'));
  }
  return std::nullopt;
}

// from_chars knows no plus sign, and takes the words of infinity and NaN, which are names in a job. It
// depends on no locale, unlike strtod, so a host that sets one does not change the coordinates.
std::optional<double> parseReal(std::string_view text) {
  const bool plus = !text.empty() && text.front() == '+';
  if (plus) text.remove_prefix(1);
  const std::string_view unsignedText = !plus && !text.empty() && text.front() == '-' ? text.substr(1) : text;
  if (unsignedText.empty() || (!isDigit(unsignedText.front()) && unsignedText.front() != '.'))
    return std::nullopt;
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace quillpress
