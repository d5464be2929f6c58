#include "cli/base/TextScan.h"

#include <charconv>

namespace quillpress::cli {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isWhite(text.front())) text.remove_prefix(1);
  while (!text.empty() && isWhite(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view takeWord(std::string_view& text) {
  while (!text.empty() && isWhite(text.front())) text.remove_prefix(1);
  std::size_t length = 0;
  while (length < text.size() && !isWhite(text[length])) ++length;
  const std::string_view word = text.substr(0, length);
  text.remove_prefix(length);
  return word;
}

std::optional<double> takeNumber(std::string_view& text) {
  std::string_view rest = text;
  std::string_view word = takeWord(rest);
  // from_chars takes a minus sign only.
  if (word.starts_with('+')) word.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  // A number with something behind it is a word of another kind, as 1st is.
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  text = rest;
  return number;
}

std::string lowered(std::string_view text) {
  std::string result(text);
  for (char& byte : result) {
    // Not tolower, which depends on the locale.
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return result;
}

}  // namespace quillpress::cli
