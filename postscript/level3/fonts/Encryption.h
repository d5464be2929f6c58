#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillpress::level3 {

inline constexpr std::uint16_t kCharstringKey = 4330;
inline constexpr std::uint16_t kEexecKey = 55665;

// Undoes Type 1 encryption, random bytes in front included.
std::string decrypted(std::string_view bytes, std::uint16_t key);

// A charstring or subroutine as plain bytes. Negative: it is not encrypted.
std::string plainCharstring(std::string_view charstring, int lenIV);

}  // namespace quillpress::level3
