#include "postscript/level3/fonts/Encryption.h"

#include <algorithm>

namespace quillpress::level3 {

std::string decrypted(std::string_view bytes, std::uint16_t key) {
  constexpr std::uint32_t kFactor = 52845;
  constexpr std::uint32_t kSummand = 22719;
  std::string result(bytes.size(), '\0');
  // Not through the string: its address would be read again after each byte, which could have changed it.
  char* plain = result.data();
  std::uint32_t state = key;
  for (const char byte : bytes) {
    const std::uint32_t cipher = static_cast<std::uint8_t>(byte);
    *plain++ = static_cast<char>(cipher ^ state >> 8);
    state = ((cipher + state) * kFactor + kSummand) & 0xffff;
  }
  return result;
}

std::string plainCharstring(std::string_view charstring, int lenIV) {
  if (lenIV < 0) return std::string(charstring);
  const std::size_t random = std::min(static_cast<std::size_t>(lenIV), charstring.size());
  return decrypted(charstring, kCharstringKey).erase(0, random);
}

}  // namespace quillpress::level3
