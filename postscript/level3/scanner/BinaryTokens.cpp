#include "postscript/level3/scanner/BinaryTokens.h"

#include <array>

#include "postscript/level3/scanner/ObjectSequence.h"
#include "postscript/level3/scanner/Scanner.h"

namespace quillpress::level3 {

namespace {

// The first byte of each kind of token.
enum Code : Byte {
  kSequenceFirst = 128,
  kSequenceLast = 131,
  kInteger32High = 132,
  kInteger32Low = 133,
  kInteger16High = 134,
  kInteger16Low = 135,
  kInteger8 = 136,
  kFixedPoint = 137,
  kRealHigh = 138,
  kRealLow = 139,
  kRealNative = 140,
  kBoolean = 141,
  kString = 142,
  kLongStringHigh = 143,
  kLongStringLow = 144,
  kSystemNameLiteral = 145,
  kSystemNameExecutable = 146,
  kUserNameLiteral = 147,
  kUserNameExecutable = 148,
  kNumberArray = 149,
};

// How a fixed-point token and a number array write their numbers.
constexpr unsigned kLowFirstFlag = 128;
constexpr unsigned kShortRepresentations = 32;
constexpr unsigned kRealRepresentation = 48;
constexpr unsigned kNativeRealRepresentation = 49;

Name* nameAt(const std::vector<Name*>& names, std::size_t index) {
  if (index >= names.size() || names[index] == nullptr) raise(ErrorName::kUndefined);
  return names[index];
}

}  // namespace

Object BinaryTokens::read() {
  const Byte code = byte();
  switch (code) {
    case kInteger32High:
      return integer(4, ByteOrder::kHighFirst);
    case kInteger32Low:
      return integer(4, ByteOrder::kLowFirst);
    case kInteger16High:
      return integer(2, ByteOrder::kHighFirst);
    case kInteger16Low:
      return integer(2, ByteOrder::kLowFirst);
    case kInteger8:
      return integer(1, ByteOrder::kHighFirst);
    case kFixedPoint:
      return fixedPoint();
    case kRealHigh:
      return real(ByteOrder::kHighFirst);
    case kRealLow:
      return real(ByteOrder::kLowFirst);
    case kRealNative:
      return real(kNativeOrder);
    case kBoolean:
      return boolean();
    case kString:
      return string(byte());
    case kLongStringHigh:
      return string(number(2, ByteOrder::kHighFirst));
    case kLongStringLow:
      return string(number(2, ByteOrder::kLowFirst));
    case kSystemNameLiteral:
      return Object::literalName(nameAt(scanner_.systemNames_, byte()));
    case kSystemNameExecutable:
      return Object::executableName(nameAt(scanner_.systemNames_, byte()));
    case kUserNameLiteral:
      return Object::literalName(nameAt(scanner_.userNames_, byte()));
    case kUserNameExecutable:
      return Object::executableName(nameAt(scanner_.userNames_, byte()));
    case kNumberArray:
      return numberArray();
    default:
      break;
  }
  if (code > kSequenceLast) raise(ErrorName::kSyntaxError);
  scanner_.isSequence_ = true;
  return ObjectSequence(scanner_.memory_, scanner_.systemNames_, scanner_.userNames_).read(code, input_);
}

Byte BinaryTokens::byte() {
  const int next = input_.get();
  if (next == ScanInput::kEnd) raise(ErrorName::kSyntaxError);
  return static_cast<Byte>(next);
}

std::uint32_t BinaryTokens::number(unsigned bytes, ByteOrder order) {
  std::array<Byte, 4> read{};
  for (unsigned i = 0; i < bytes; ++i) read[i] = byte();
  return unsignedOf(std::span(read).first(bytes), order);
}

Object BinaryTokens::integer(unsigned bytes, ByteOrder order) {
  return Object::integer(signedOf(number(bytes, order), bytes));
}

Object BinaryTokens::real(ByteOrder order) {
  return realOfBits(number(4, order));
}

Object BinaryTokens::fixedPoint() {
  const unsigned representation = byte();
  if ((representation & ~kLowFirstFlag) >= kRealRepresentation) raise(ErrorName::kSyntaxError);
  return represented(representation);
}

Object BinaryTokens::represented(unsigned representation) {
  const ByteOrder order =
      (representation & kLowFirstFlag) != 0 ? ByteOrder::kLowFirst : ByteOrder::kHighFirst;
  const unsigned kind = representation & ~kLowFirstFlag;
  if (kind == kNativeRealRepresentation) return real(kNativeOrder);
  if (kind == kRealRepresentation) return real(order);
  if (kind > kNativeRealRepresentation) raise(ErrorName::kSyntaxError);
  const bool isShort = kind >= kShortRepresentations;
  const unsigned bytes = isShort ? 2 : 4;
  return fixedPointOf(signedOf(number(bytes, order), bytes), isShort ? kind - kShortRepresentations : kind);
}

Object BinaryTokens::boolean() {
  const Byte value = byte();
  if (value > 1) raise(ErrorName::kSyntaxError);
  return Object::boolean(value == 1);
}

Object BinaryTokens::string(std::uint32_t length) {
  const Object text = scanner_.memory_.newString(std::size_t{length});
  for (std::uint32_t i = 0; i < length; ++i) text.bytes()[i] = byte();
  return text;
}

Object BinaryTokens::numberArray() {
  const unsigned representation = byte();
  const ByteOrder order =
      (representation & kLowFirstFlag) != 0 ? ByteOrder::kLowFirst : ByteOrder::kHighFirst;
  const std::uint32_t length = number(2, order);
  const Object array = scanner_.memory_.newArray(std::size_t{length});
  for (std::uint32_t i = 0; i < length; ++i) array.elements()[i] = represented(representation);
  return array;
}

}  // namespace quillpress::level3
