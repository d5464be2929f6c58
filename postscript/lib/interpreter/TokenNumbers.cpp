#include "postscript/lib/interpreter/TokenNumbers.h"

#include "postscript/lib/objects/IntegerObject.h"
#include "postscript/lib/objects/NumberUtils.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {

namespace {

// Most words are names, and this spares them the four attempts below.
bool mayBeginNumber(char c) {
  return (c >= '0' && c <= '9') || c == '.' || c == '+' || c == '-';
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
    if (c >= '0' && c <= '9') continue;
    if ((c == '+' || c == '-') && i == 0) continue;
    if (c == '.' && ++points == 1) continue;
    if ((c == 'e' || c == 'E') && ++exponents == 1) continue;
    return false;
  }
  return true;
}

}  // namespace

// Kept: a lone sign is the integer 0, though prologues define signs as procedures (tokenizer/numbers.ps).
Ref<PostscriptObject> numberFromToken(std::string_view text) {
  if (!mayBeginNumber(text.front())) return nullptr;
  // A radix number that does not convert falls through and becomes a name.
  if (hasRadixSign(text)) {
    if (const auto radix = parseRadixInteger(text)) return make<IntegerObject>(*radix);
  }
  if (const auto integer = parseDecimalInteger(text)) return make<IntegerObject>(*integer);
  // The numbers of most jobs, faster than the conversion of any spelling, with the same result.
  if (const auto decimal = parsePlainDecimal(text)) return make<RealObject>(*decimal);
  if (!isSpelledLikeReal(text)) return nullptr;
  if (const auto real = parseReal(text)) return make<RealObject>(*real);
  return nullptr;
}

}  // namespace quillpress
