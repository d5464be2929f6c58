#include "cli/cups/ServerOptions.h"

namespace quillpress::cli {

namespace {

constexpr std::string_view kBlanks = " \t\n\r";

// Takes characters up to one of `ends` that is neither quoted nor escaped.
std::string takeUpTo(std::string_view& text, std::string_view ends) {
  std::string taken;
  char quote = 0;
  while (!text.empty()) {
    const char character = text.front();
    if (quote == 0 && ends.find(character) != std::string_view::npos) break;
    text.remove_prefix(1);
    if (character == '\\' && !text.empty()) {
      taken += text.front();
      text.remove_prefix(1);
    } else if (quote == 0 && (character == '\'' || character == '"')) {
      quote = character;
    } else if (character == quote) {
      quote = 0;
    } else {
      taken += character;
    }
  }
  return taken;
}

void skipBlanks(std::string_view& text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  text.remove_prefix(begin == std::string_view::npos ? text.size() : begin);
}

}  // namespace

ServerOptions::ServerOptions(std::string_view text) {
  for (skipBlanks(text); !text.empty(); skipBlanks(text)) {
    std::string name = takeUpTo(text, " \t\n\r=");
    if (text.starts_with('=')) {
      text.remove_prefix(1);
      values_[name] = takeUpTo(text, kBlanks);
    } else if (name.starts_with("no")) {
      values_[name.substr(2)] = "false";
    } else {
      values_[name] = "true";
    }
  }
}

std::string ServerOptions::value(const std::string& name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? std::string() : found->second;
}

}  // namespace quillpress::cli
