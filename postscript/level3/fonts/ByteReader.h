#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "postscript/level3/fonts/FontError.h"

namespace quillpress::level3 {

// Reads numbers with their high byte first; whatever lies outside the bytes is a FontError.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes, std::size_t at = 0) : bytes_(bytes), at_(at) {}

  std::size_t position() const { return at_; }
  std::size_t left() const { return at_ < bytes_.size() ? bytes_.size() - at_ : 0; }
  bool atEnd() const { return left() == 0; }

  std::uint8_t u8() { return static_cast<std::uint8_t>(take(1)[0]); }
  std::uint16_t u16() { return static_cast<std::uint16_t>(unsignedOf(2)); }
  std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
  std::uint32_t u32() { return unsignedOf(4); }
  std::int32_t i32() { return static_cast<std::int32_t>(u32()); }

  // REQUIRES: size <= 4
  std::uint32_t unsignedOf(std::size_t size) {
    std::uint32_t value = 0;
    for (const char byte : take(size)) value = value << 8 | static_cast<std::uint8_t>(byte);
    return value;
  }

  std::string_view take(std::size_t size) {
    if (at_ > bytes_.size() || size > left()) throw FontError("the font's data ends too early");
    at_ += size;
    return bytes_.substr(at_ - size, size);
  }
  void skip(std::size_t size) { take(size); }

 private:
  std::string_view bytes_;
  std::size_t at_;
};

// The part of bytes at a place, or a FontError where it sticks out.
inline std::string_view partOf(std::string_view bytes, std::size_t at, std::size_t size) {
  return ByteReader(bytes, at).take(size);
}

}  // namespace quillpress::level3
