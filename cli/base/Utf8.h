#pragma once

#include <cstddef>
#include <string_view>

namespace quillpress::cli {

// Whether `byte` is one of UTF-8 that begins no character.
constexpr bool isContinuation(unsigned char byte) {
  return (byte & 0xC0U) == 0x80U;
}

// The length of the UTF-8 character with which `text` begins; 0 when it begins with no shortest form of one.
// REQUIRES: there is text.
std::size_t characterLength(std::string_view text);

}  // namespace quillpress::cli
