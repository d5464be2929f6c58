#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quillpress {

// The sets of bytes at which the tokenizer's scans stop, one bit each.
enum class DelimiterSet : std::uint8_t {
  kToken = 1,           // names and numbers
  kComment = 2,         // line ends
  kLiteralString = 4,   // backslash and parentheses
  kHexString = 8,       // >
  kAscii85String = 16,  // ~
};

namespace detail {

constexpr void addDelimiters(std::array<std::uint8_t, 256>& table, DelimiterSet set,
                             std::string_view characters) {
  for (const char c : characters) {
    auto& bits = table[static_cast<unsigned char>(c)];
    bits = static_cast<std::uint8_t>(bits | static_cast<std::uint8_t>(set));
  }
}

constexpr std::array<std::uint8_t, 256> makeDelimiterTable() {
  std::array<std::uint8_t, 256> table{};
  addDelimiters(table, DelimiterSet::kToken, "\n\r \t\f()<>[]{}%/");
  addDelimiters(table, DelimiterSet::kComment, "\n\f\r");
  addDelimiters(table, DelimiterSet::kLiteralString, "\\()");
  addDelimiters(table, DelimiterSet::kHexString, ">");
  addDelimiters(table, DelimiterSet::kAscii85String, "~");
  return table;
}

inline constexpr std::array<std::uint8_t, 256> kDelimiterTable = makeDelimiterTable();

}  // namespace detail

constexpr bool isDelimiter(DelimiterSet set, char c) {
  return (detail::kDelimiterTable[static_cast<unsigned char>(c)] & static_cast<std::uint8_t>(set)) != 0;
}

constexpr bool isWhiteSpace(char c) {
  return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f';
}

// A delimiter that is a name of its own.
constexpr bool isBracket(char c) {
  return c == '[' || c == ']' || c == '{' || c == '}';
}

constexpr bool isOctalDigit(char c) {
  return c >= '0' && c <= '7';
}

}  // namespace quillpress
