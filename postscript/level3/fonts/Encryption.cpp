#include "postscript/level3/fonts/Encryption.h"

#include <algorithm>

namespace quillpress::level3 {

namespace {

// The key behind a byte is (byte + key) * kFactor + kSummand, of which 16 bits count.
constexpr std::uint32_t kFactor = 52845;
constexpr std::uint32_t kSummand = 22719;

std::uint32_t keyBehind(std::uint32_t cipher, std::uint32_t key) {
  return (cipher + key) * kFactor + kSummand;
}

char plainByte(std::uint32_t cipher, std::uint32_t key) {
  return static_cast<char>(cipher ^ (key & 0xffff) >> 8);
}

}  // namespace

std::string decrypted(std::string_view bytes, std::uint16_t key) {
  std::string result(bytes.size(), '\0');
  // Not through the string: its address would be read again after each byte, which could have changed it.
  char* plain = result.data();
  const auto* cipher = reinterpret_cast<const std::uint8_t*>(bytes.data());
  const std::uint8_t* const end = cipher + bytes.size();
  std::uint32_t state = key;
  // Four bytes at a time: what the bytes add to the keys does not wait for the key before them. Overflow of
  // more than 16 bits does no harm to those.
  constexpr std::uint32_t kSquare = kFactor * kFactor;
  constexpr std::uint32_t kCube = kSquare * kFactor;
  for (; end - cipher >= 4; cipher += 4, plain += 4) {
    const std::uint32_t first = keyBehind(cipher[0], 0);
    const std::uint32_t second = keyBehind(cipher[1], first);
    const std::uint32_t third = keyBehind(cipher[2], second);
    const std::uint32_t fourth = keyBehind(cipher[3], third);
    plain[0] = plainByte(cipher[0], state);
    plain[1] = plainByte(cipher[1], state * kFactor + first);
    plain[2] = plainByte(cipher[2], state * kSquare + second);
    plain[3] = plainByte(cipher[3], state * kCube + third);
    state = state * (kCube * kFactor) + fourth;
  }
  for (; cipher != end; ++cipher) {
    *plain++ = plainByte(*cipher, state);
    state = keyBehind(*cipher, state);
  }
  return result;
}

std::string plainCharstring(std::string_view charstring, int lenIV) {
  if (lenIV < 0) return std::string(charstring);
  const std::size_t random = std::min(static_cast<std::size_t>(lenIV), charstring.size());
  return decrypted(charstring, kCharstringKey).erase(0, random);
}

}  // namespace quillpress::level3
