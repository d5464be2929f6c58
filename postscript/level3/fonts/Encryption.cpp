#include "postscript/level3/fonts/Encryption.h"

#include <algorithm>

namespace quillpress::level3 {

std::string decrypted(std::string_view bytes, std::uint16_t key) {
  constexpr std::uint32_t kFactor = 52845;
  constexpr std::uint32_t kSummand = 22719;
  std::string result(bytes.size(), '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto cipher = static_cast<std::uint8_t>(bytes[i]);
    result[i] = static_cast<char>(cipher ^ key >> 8);
    key = static_cast<std::uint16_t>((cipher + std::uint32_t{key}) * kFactor + kSummand);
  }
  return result;
}

std::string plainCharstring(std::string_view charstring, int lenIV) {
  if (lenIV < 0) return std::string(charstring);
  const std::size_t random = std::min(static_cast<std::size_t>(lenIV), charstring.size());
  return decrypted(charstring, kCharstringKey).erase(0, random);
}

}  // namespace quillpress::level3
