#include "postscript/level3/operators/SequenceWriter.h"

#include <bit>

namespace quillpress::level3 {

namespace {

constexpr std::size_t kObjectSize = 8;
constexpr std::size_t kShortHeader = 4;
constexpr std::size_t kLongHeader = 8;
constexpr std::size_t kLongestShort = 65535;
// An array that contains itself would never end.
constexpr std::size_t kMostObjects = 1U << 20;

enum SequenceType : std::uint8_t {
  kNullType = 0,
  kIntegerType = 1,
  kRealType = 2,
  kNameType = 3,
  kBooleanType = 4,
  kStringType = 5,
  kArrayType = 9,
  kMarkType = 10,
};

}  // namespace

std::vector<std::uint8_t> SequenceWriter::write(const Object& object, std::uint8_t tag) {
  places_.push_back({object, tag});
  // The elements of each array come in a row, behind those of the arrays before it.
  for (std::size_t i = 0; i < places_.size(); ++i) layOut(Object(places_[i].object));
  for (const Place& place : places_) writeObject(place);
  const std::size_t bodyLength = bytes_.size() + texts_.size();
  std::vector<std::uint8_t> body;
  body.swap(bytes_);
  const bool isShort = bodyLength + kShortHeader <= kLongestShort;
  bytes_.push_back(order_ == ByteOrder::kHighFirst ? 128 : 129);
  if (isShort) {
    bytes_.push_back(1);
    number(static_cast<std::uint32_t>(bodyLength + kShortHeader), 2);
  } else {
    bytes_.push_back(0);
    number(1, 2);
    number(static_cast<std::uint32_t>(bodyLength + kLongHeader), 4);
  }
  bytes_.insert(bytes_.end(), body.begin(), body.end());
  bytes_.insert(bytes_.end(), texts_.begin(), texts_.end());
  return std::move(bytes_);
}

void SequenceWriter::layOut(const Object& object) {
  if (!object.isArray()) return;
  if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
  if (places_.size() + object.length() > kMostObjects) raise(ErrorName::kLimitCheck);
  for (const Object& element : elementsOf(object)) places_.push_back({element, 0});
}

void SequenceWriter::writeObject(const Place& place) {
  const Object& object = place.object;
  switch (object.type()) {
    case Type::kNull:
      head(kNullType, place, 0);
      return number(0, 4);
    case Type::kInteger:
      if (object.asInteger() != static_cast<std::int32_t>(object.asInteger())) raise(ErrorName::kRangeCheck);
      head(kIntegerType, place, 0);
      return number(static_cast<std::uint32_t>(object.asInteger()), 4);
    case Type::kReal:
      head(kRealType, place, 0);
      return number(std::bit_cast<std::uint32_t>(object.asReal()), 4);
    case Type::kBoolean:
      head(kBooleanType, place, 0);
      return number(object.asBoolean() ? 1 : 0, 4);
    case Type::kMark:
      head(kMarkType, place, 0);
      return number(0, 4);
    case Type::kName:
      return writeText(object.asName()->text(), kNameType, place);
    case Type::kString:
      if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
      return writeText(textOf(object), kStringType, place);
    case Type::kArray:
    case Type::kPackedArray:
      if (object.length() > kLongestShort) raise(ErrorName::kLimitCheck);
      head(kArrayType, place, object.length());
      number(static_cast<std::uint32_t>(nextArray_ * kObjectSize), 4);
      nextArray_ += object.length();
      return;
    default:
      raise(ErrorName::kTypeCheck);
  }
}

void SequenceWriter::writeText(std::string_view text, std::uint8_t type, const Place& place) {
  if (text.size() > kLongestShort) raise(ErrorName::kLimitCheck);
  head(type, place, text.size());
  number(static_cast<std::uint32_t>(places_.size() * kObjectSize + texts_.size()), 4);
  texts_.insert(texts_.end(), text.begin(), text.end());
}

void SequenceWriter::head(std::uint8_t type, const Place& place, std::size_t length) {
  bytes_.push_back(static_cast<std::uint8_t>(type | (place.object.isExecutable() ? 0x80 : 0)));
  bytes_.push_back(place.tag);
  number(static_cast<std::uint32_t>(length), 2);
}

void SequenceWriter::number(std::uint32_t value, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) {
    const std::size_t shift = 8 * (order_ == ByteOrder::kHighFirst ? bytes - 1 - i : i);
    bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

}  // namespace quillpress::level3
