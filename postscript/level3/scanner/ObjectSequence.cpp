#include "postscript/level3/scanner/ObjectSequence.h"

#include <algorithm>
#include <array>

namespace quillpress::level3 {

namespace {

constexpr std::size_t kObjectSize = 8;
constexpr Byte kExecutableFlag = 0x80;
constexpr std::uint32_t kSystemNameLength = 0xffff;

// The kinds of objects in a sequence.
enum SequenceType : Byte {
  kNullType = 0,
  kIntegerType = 1,
  kRealType = 2,
  kNameType = 3,
  kBooleanType = 4,
  kStringType = 5,
  kImmediateNameType = 6,
  kArrayType = 9,
  kMarkType = 10,
};

template <std::size_t kSize>
std::array<Byte, kSize> readBytes(ScanInput& input) {
  std::array<Byte, kSize> bytes{};
  for (Byte& byte : bytes) {
    const int next = input.get();
    if (next == ScanInput::kEnd) raise(ErrorName::kSyntaxError);
    byte = static_cast<Byte>(next);
  }
  return bytes;
}

}  // namespace

Object ObjectSequence::read(Byte code, ScanInput& input) {
  order_ = (code & 1) == 0 ? ByteOrder::kHighFirst : ByteOrder::kLowFirst;
  const Header header = readHeader(input);
  readBody(input, header.bodyLength);
  const std::size_t count = countObjects(header.count);
  const Object all = memory_.newArray(count);
  for (std::size_t i = 0; i < count; ++i) {
    const Object element = objectAt(i, all);
    // Only an immediate name can bring a local value into a sequence that is made in global memory.
    VirtualMemory::checkStorable(*all.arrayStorage(), element);
    all.elements()[i] = element;
  }
  return all.interval(0, header.count).asExecutable();
}

// Four bytes, or eight when the count does not fit into one.
ObjectSequence::Header ObjectSequence::readHeader(ScanInput& input) const {
  const auto first = readBytes<3>(input);
  std::uint32_t count = first[0];
  std::uint32_t length = unsignedOf(std::span(first).subspan(1), order_);
  std::uint32_t headerLength = 4;
  if (count == 0) {
    count = length;
    length = unsignedOf(readBytes<4>(input), order_);
    headerLength = 8;
  }
  if (length < headerLength || (length - headerLength) / kObjectSize < count) raise(ErrorName::kSyntaxError);
  if (length > Object::kMaxLength) raise(ErrorName::kLimitCheck);
  return {count, length - headerLength};
}

void ObjectSequence::readBody(ScanInput& input, std::uint32_t length) {
  // In pieces, so that a length that the data does not keep costs no memory.
  constexpr std::size_t kPiece = 65536;
  while (body_.size() < length) {
    const std::size_t start = body_.size();
    body_.resize(std::min<std::size_t>(length, start + kPiece));
    const std::span<Byte> piece = std::span(body_).subspan(start);
    if (input.read(piece) != piece.size()) raise(ErrorName::kSyntaxError);
  }
}

// The top-level objects and all that arrays among them reach, in the order in which they stand.
std::size_t ObjectSequence::countObjects(std::size_t topCount) const {
  std::size_t count = topCount;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t place = i * kObjectSize;
    if ((body_[place] & ~kExecutableFlag) != kArrayType) continue;
    const std::uint32_t length = number(place + 2, 2);
    const std::uint32_t offset = number(place + 4, 4);
    const std::size_t end = std::size_t{offset} + length * kObjectSize;
    if (offset % kObjectSize != 0 || end > body_.size()) raise(ErrorName::kSyntaxError);
    count = std::max(count, end / kObjectSize);
  }
  return count;
}

Object ObjectSequence::objectAt(std::size_t index, const Object& all) {
  const std::size_t place = index * kObjectSize;
  const bool isExecutable = (body_[place] & kExecutableFlag) != 0;
  const auto type = static_cast<Byte>(body_[place] & ~kExecutableFlag);
  const std::uint32_t length = number(place + 2, 2);
  const std::uint32_t value = number(place + 4, 4);
  Object object;
  switch (type) {
    case kNullType:
      break;
    case kIntegerType:
      object = Object::integer(static_cast<std::int32_t>(value));
      break;
    case kRealType:
      object = length == 0 ? realOfBits(value) : fixedPointOf(static_cast<std::int32_t>(value), length & 31);
      break;
    case kNameType:
      object = nameOf(length, value, isExecutable);
      break;
    case kBooleanType:
      object = Object::boolean(value != 0);
      break;
    case kStringType:
      object = memory_.newString(textAt(value, length));
      break;
    case kImmediateNameType: {
      const Object* const bound = memory_.dictionaryStack().find(nameOf(length, value, false).asName());
      if (bound == nullptr) raise(ErrorName::kUndefined);
      return *bound;
    }
    case kArrayType:
      object = all.interval(static_cast<std::uint32_t>(value / kObjectSize), length);
      break;
    case kMarkType:
      object = Object::mark();
      break;
    default:
      raise(ErrorName::kSyntaxError);
  }
  return isExecutable ? object.asExecutable() : object;
}

// Without a text, `value` is a number in one of the name tables.
Object ObjectSequence::nameOf(std::uint32_t length, std::uint32_t value, bool isExecutable) {
  Name* name = nullptr;
  if (length == 0 || length == kSystemNameLength) {
    const std::vector<Name*>& names = length == 0 ? userNames_ : systemNames_;
    if (value >= names.size() || names[value] == nullptr) raise(ErrorName::kUndefined);
    name = names[value];
  } else {
    name = memory_.internName(textAt(value, length));
  }
  return isExecutable ? Object::executableName(name) : Object::literalName(name);
}

std::string_view ObjectSequence::textAt(std::uint32_t offset, std::uint32_t length) const {
  if (length == 0) return {};
  if (offset > body_.size() || body_.size() - offset < length) raise(ErrorName::kSyntaxError);
  return {reinterpret_cast<const char*>(body_.data()) + offset, length};
}

}  // namespace quillpress::level3
