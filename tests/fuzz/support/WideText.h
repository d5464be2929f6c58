#pragma once

#include <string>

#include "tests/fuzz/support/Choices.h"

namespace quillpress::fuzz {

// A text of at most so many characters, each of 16 bits as on Windows: mostly those of one byte.
inline std::wstring wideText(Choices& choices, std::size_t most) {
  std::wstring text(choices.below(most + 1), L'\0');
  for (wchar_t& character : text) {
    const std::uint8_t first = choices.byte();
    character = static_cast<wchar_t>(first < 0xF0 ? first : first % 16 * 4096 + choices.byte() * 16);
  }
  return text;
}

// For messages, and for parsers that want bytes.
inline std::string utf8Of(const std::wstring& text) {
  std::string bytes;
  for (const wchar_t character : text) {
    const auto code = static_cast<std::uint32_t>(static_cast<char32_t>(character));
    if (code < 0x80) {
      bytes += static_cast<char>(code);
    } else if (code < 0x800) {
      bytes += {static_cast<char>(0xC0 | code >> 6U), static_cast<char>(0x80 | (code & 0x3FU))};
    } else {
      bytes += {static_cast<char>(0xE0 | code >> 12U), static_cast<char>(0x80 | (code >> 6U & 0x3FU)),
                static_cast<char>(0x80 | (code & 0x3FU))};
    }
  }
  return bytes;
}

}  // namespace quillpress::fuzz
