#include "postscript/lib/objects/DecodeFilters.h"

#include <cstdint>

#include "postscript/lib/objects/HexDigits.h"

namespace quillpress {

namespace {

// Appends the first `count` bytes of a big-endian group of four.
void appendGroup(std::string& bytes, std::uint32_t group, int count) {
  for (int i = 0; i < count; ++i)
    bytes.push_back(static_cast<char>(group >> (24U - 8U * static_cast<unsigned>(i))));
}

}  // namespace

// Tolerant of anything, since the text was accepted when it was read: an image passes it on as it stands,
// and only the language asks for its bytes.
std::string decodeHex(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 2);
  int high = -1;
  for (const char c : text) {
    const int digit = hexDigitValue(c);
    if (digit < 0) continue;
    if (high < 0) {
      high = digit;
    } else {
      bytes.push_back(static_cast<char>(high * 16 + digit));
      high = -1;
    }
  }
  if (high >= 0) bytes.push_back(static_cast<char>(high * 16));
  return bytes;
}

std::string decodeAscii85(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 5 * 4);
  std::uint32_t group = 0;
  int digits = 0;
  for (const char c : text.substr(0, text.find('~'))) {
    if (c == 'z' && digits == 0) {
      // The short form of a group of zeros, which stands between groups only.
      bytes.append(4, '\0');
      continue;
    }
    if (c < '!' || c > 'u') continue;
    // Groups beyond 32 bits wrap; they are errors of the job, and there is nobody to tell.
    group = group * 85U + static_cast<std::uint32_t>(c - '!');
    if (++digits < 5) continue;
    appendGroup(bytes, group, 4);
    group = 0;
    digits = 0;
  }
  if (digits > 1) {  // a short last group is filled up with the highest digit; n digits hold n-1 bytes
    for (int i = digits; i < 5; ++i) group = group * 85U + 84U;
    appendGroup(bytes, group, digits - 1);
  }
  return bytes;
}

// Filters of other names come from the job and are passed on to the PDF reader; the language sees their
// text.
std::string decodeWith(std::string_view filterName, const std::string& text) {
  if (filterName == kAsciiHexDecode) return decodeHex(text);
  if (filterName == kAscii85Decode) return decodeAscii85(text);
  return text;
}

}  // namespace quillpress
