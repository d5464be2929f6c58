#include "postscript/lib/interpreter/TokenNumbers.h"

#include <array>
#include <optional>

#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

// An optional sign, digits and at most one point among them: how nearly all numbers of jobs are spelled.
struct PlainNumber {
  std::int64_t digits = 0;  // with the sign
  std::size_t decimals = 0;
  bool isNegative = false;
  bool hasPoint = false;
};

// As many digits as a double holds exactly, whatever they are.
constexpr std::size_t kMostDigits = 15;

// Most words are names, and this spares them all the attempts.
bool mayBeginNumber(char c) {
  return isDigit(c) || c == '.' || isSign(c);
}

// Empty for any other text, number or not.
std::optional<PlainNumber> readPlainNumber(std::string_view text) {
  // Fewer digits than 64 bits hold, so that what follows need not look; exactly how many is checked behind
  // it.
  if (text.size() > kMostDigits + 2) return std::nullopt;
  PlainNumber number;
  auto at = text.begin();
  const auto readDigits = [&] {
    const auto first = at;
    for (; at != text.end() && isDigit(*at); ++at) number.digits = number.digits * 10 + (*at - '0');
    return static_cast<std::size_t>(at - first);
  };
  number.isNegative = *at == '-';
  if (isSign(*at)) ++at;
  std::size_t digitCount = readDigits();
  number.hasPoint = at != text.end() && *at == '.';
  if (number.hasPoint) {
    ++at;
    number.decimals = readDigits();
    digitCount += number.decimals;
  }
  if (at != text.end() || digitCount == 0 || digitCount > kMostDigits) return std::nullopt;
  if (number.isNegative) number.digits = -number.digits;
  return number;
}

// Digits and power of ten are both exact doubles, so that their quotient is the nearest double. The sign of a
// zero is lost in the digits.
double realOf(const PlainNumber& number) {
  static constexpr std::array<double, kMostDigits + 1> kPowersOfTen{
      1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  if (number.digits == 0 && number.isNegative) return -0.0;
  return static_cast<double>(number.digits) / kPowersOfTen[number.decimals];
}

bool hasRadixSign(std::string_view text) {
  return text.size() > 2 && (text[1] == '#' || text[2] == '#');
}

// Kept: a sign stands only at the very front, so 1e-5 is a name (tokenizer/numbers.ps).
bool isSpelledLikeReal(std::string_view text) {
  int points = 0;
  int exponents = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (isDigit(c)) continue;
    if (isSign(c) && i == 0) continue;
    if (c == '.' && ++points == 1) continue;
    if ((c == 'e' || c == 'E') && ++exponents == 1) continue;
    return false;
  }
  return true;
}

// The numbers of any spelling.
// Kept: a lone sign is the integer 0, though prologues define signs as procedures (tokenizer/numbers.ps).
Ref<PostscriptObject> anyNumberFromToken(std::string_view text, const MemorySet& memory) {
  // A radix number that does not convert falls through and becomes a name.
  if (hasRadixSign(text)) {
    if (const auto radix = parseRadixInteger(text)) return memory.newInteger(*radix);
  }
  if (const auto integer = parseDecimalInteger(text)) return memory.newInteger(*integer);
  if (!isSpelledLikeReal(text)) return nullptr;
  if (const auto real = parseReal(text)) return memory.newReal(*real);
  return nullptr;
}

}  // namespace

// An integer without a point that does not fit becomes a real.
Ref<PostscriptObject> numberFromToken(std::string_view text, const MemorySet& memory) {
  if (!mayBeginNumber(text.front())) return nullptr;
  const auto plain = readPlainNumber(text);
  if (!plain) return anyNumberFromToken(text, memory);
  const auto integer = static_cast<std::int32_t>(plain->digits);
  if (!plain->hasPoint && integer == plain->digits) return memory.newInteger(integer);
  return memory.newReal(realOf(*plain));
}

}  // namespace quillpress
