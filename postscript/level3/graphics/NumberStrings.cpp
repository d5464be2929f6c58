#include "postscript/level3/graphics/NumberStrings.h"

#include <bit>
#include <cmath>

#include "postscript/level3/graphics/DictionaryReader.h"

namespace quillpress::level3 {

namespace {

constexpr std::uint8_t kNumberArrayToken = 149;
constexpr std::size_t kHeader = 4;

// How the second byte of the header says that numbers are kept.
struct Representation {
  std::size_t bytes;
  bool isReal;
  bool isLowFirst;
  int fractionBits;
};

Representation representationOf(std::uint8_t code) {
  const bool isLowFirst = code >= 128;
  const int kind = code % 128;
  if (kind <= 31) return {4, false, isLowFirst, kind};
  if (kind <= 47) return {2, false, isLowFirst, kind - 32};
  // The machine's own order is that of almost every machine.
  if (kind == 48) return {4, true, isLowFirst, 0};
  if (kind == 49) return {4, true, true, 0};
  raise(ErrorName::kRangeCheck);
}

std::uint32_t wordAt(const std::uint8_t* bytes, std::size_t count, bool isLowFirst) {
  std::uint32_t word = 0;
  for (std::size_t index = 0; index < count; ++index) {
    const std::size_t place = isLowFirst ? count - 1 - index : index;
    word = word << 8 | bytes[place];
  }
  return word;
}

double numberAt(const std::uint8_t* bytes, const Representation& kind) {
  const std::uint32_t word = wordAt(bytes, kind.bytes, kind.isLowFirst);
  if (kind.isReal) return static_cast<double>(std::bit_cast<float>(word));
  const auto value = kind.bytes == 2 ? static_cast<std::int32_t>(static_cast<std::int16_t>(word))
                                     : static_cast<std::int32_t>(word);
  return std::ldexp(static_cast<double>(value), -kind.fractionBits);
}

}  // namespace

bool isNumberString(const Object& object) {
  return object.isString() && object.length() >= kHeader && *object.bytes() == kNumberArrayToken;
}

std::vector<double> numbersOfArrayOrString(const Object& object) {
  if (!object.isString()) return numbersOf(object);
  if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
  if (!isNumberString(object)) raise(ErrorName::kTypeCheck);
  const std::uint8_t* bytes = object.bytes();
  const Representation kind = representationOf(bytes[1]);
  const std::size_t count = wordAt(bytes + 2, 2, kind.isLowFirst);
  if (kHeader + count * kind.bytes > object.length()) raise(ErrorName::kRangeCheck);
  std::vector<double> numbers;
  for (std::size_t index = 0; index < count; ++index) {
    numbers.push_back(numberAt(bytes + kHeader + index * kind.bytes, kind));
  }
  return numbers;
}

}  // namespace quillpress::level3
