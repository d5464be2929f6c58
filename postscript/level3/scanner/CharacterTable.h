#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quillpress::level3 {

// How the scanner sees a byte.
enum class CharacterKind : std::uint8_t { kRegular, kSpace, kDelimiter, kBinaryToken };

namespace detail {

consteval std::array<CharacterKind, 256> characterKinds() {
  std::array<CharacterKind, 256> kinds{};
  for (const unsigned char space : {'\0', '\t', '\n', '\f', '\r', ' '}) kinds[space] = CharacterKind::kSpace;
  for (const unsigned char delimiter : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'}) {
    kinds[delimiter] = CharacterKind::kDelimiter;
  }
  for (std::size_t first = 128; first < 160; ++first) kinds[first] = CharacterKind::kBinaryToken;
  return kinds;
}

// The value of a digit in a base of up to 36; 255 for what is no digit.
consteval std::array<std::uint8_t, 256> digitValues() {
  std::array<std::uint8_t, 256> values{};
  values.fill(255);
  for (unsigned char i = 0; i < 10; ++i) values['0' + i] = i;
  for (unsigned char i = 0; i < 26; ++i) {
    values['a' + i] = static_cast<std::uint8_t>(10 + i);
    values['A' + i] = static_cast<std::uint8_t>(10 + i);
  }
  return values;
}

}  // namespace detail

inline constexpr auto kCharacterKinds = detail::characterKinds();
inline constexpr auto kDigitValues = detail::digitValues();

inline bool isSpace(std::uint8_t byte) {
  return kCharacterKinds[byte] == CharacterKind::kSpace;
}

}  // namespace quillpress::level3
