#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillpress::cli {

// Blank, tab, line end, form feed or zero: what PostScript and PDF call white space.
constexpr bool isWhite(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r' || byte == '\f' || byte == '\0';
}

constexpr bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

// `text` without white space at its ends.
std::string_view trimmed(std::string_view text);

// Takes the next word (up to white space) off the front of `text`; empty at the end.
std::string_view takeWord(std::string_view& text);

// Takes a decimal number off the front of `text`, whatever the locale. `text` is unharmed on failure.
std::optional<double> takeNumber(std::string_view& text);

// `text` with its ASCII capitals made small.
std::string lowered(std::string_view text);

}  // namespace quillpress::cli
