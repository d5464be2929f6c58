#pragma once

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// The language's white space.
constexpr bool isWhiteSpace(Byte byte) {
  return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t' || byte == '\f' || byte == '\0';
}

// The value of a hexadecimal digit, or -1.
constexpr int hexDigit(Byte byte) {
  if (byte >= '0' && byte <= '9') return byte - '0';
  if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
  if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
  return -1;
}

}  // namespace quillpress::level3
