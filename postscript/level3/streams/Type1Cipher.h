#pragma once

#include <optional>
#include <vector>

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// The cipher of Type 1 fonts, for `eexec` and, with another key, for charstrings.
class Type1Cipher {
 public:
  static constexpr std::uint16_t kEexecKey = 55665;
  static constexpr std::uint16_t kCharstringKey = 4330;

  explicit Type1Cipher(std::uint16_t key) : key_(key) {}

  Byte decrypt(Byte cipher) {
    const auto plain = static_cast<Byte>(cipher ^ key_ >> 8);
    advance(cipher);
    return plain;
  }

  Byte encrypt(Byte plain) {
    const auto cipher = static_cast<Byte>(plain ^ key_ >> 8);
    advance(cipher);
    return cipher;
  }

 private:
  void advance(Byte cipher) { key_ = static_cast<std::uint16_t>((cipher + key_) * 52845U + 22719U); }

  std::uint16_t key_;
};

// The plain bytes of a charstring or subroutine, without the `randomBytes` (a font's lenIV) at its start. A
// negative count means that it is not encrypted. Nothing when it is shorter than that.
std::optional<std::vector<Byte>> decryptCharstring(Bytes cipher, int randomBytes);

// The opposite; the bytes at the start are zeros.
std::vector<Byte> encryptCharstring(Bytes plain, int randomBytes);

}  // namespace quillpress::level3
