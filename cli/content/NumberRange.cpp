#include "cli/content/NumberRange.h"

#include <string>

#include "cli/base/Errors.h"
#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

// PDF readers count in 64 bits, some in less; a number with more digits than this before its point is refused
// by one or the other. A job gets such numbers by mistake only.
constexpr std::size_t kMostDigits = 18;

// The digits around offset `at`, which is one of them.
std::string_view digitsAround(std::string_view text, std::size_t at) {
  std::size_t begin = at;
  while (begin > 0 && isDigit(text[begin - 1])) --begin;
  std::size_t end = at;
  while (end < text.size() && isDigit(text[end])) ++end;
  return text.substr(begin, end - begin);
}

bool isFraction(std::string_view text, std::string_view digits) {
  return digits.data() != text.data() && digits.data()[-1] == '.';
}

}  // namespace

void checkNumbers(std::string_view content) {
  // Content is mostly numbers, all of them short. A long one covers one of these places wherever it begins,
  // so that looking at all the others is needless.
  for (std::size_t at = kMostDigits; at < content.size(); at += kMostDigits + 1) {
    if (!isDigit(content[at])) continue;
    const std::string_view digits = digitsAround(content, at);
    if (digits.size() <= kMostDigits || isFraction(content, digits)) continue;
    throw PageError("the number " + std::string(digits) + " is beyond what PDF readers take");
  }
}

}  // namespace quillpress::cli
