#include "umpd/rules/SettingText.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quillpress::driver {
namespace {

bool isDigit(wchar_t character) {
  return character >= L'0' && character <= L'9';
}

}  // namespace

int toInteger(std::wstring_view text) {
  // One beyond the greatest is as far as the sum may grow: it is the magnitude of the smallest.
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  const bool negative = text.starts_with(L'-');
  if (negative) text.remove_prefix(1);
  std::int64_t magnitude = 0;
  for (const wchar_t character : text) {
    if (!isDigit(character)) break;
    magnitude = std::min(magnitude * 10 + (character - L'0'), kMost + 1);
  }
  return static_cast<int>(negative ? -magnitude : std::min(magnitude, kMost));
}

bool isDecimalNumber(std::wstring_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

std::vector<IniLine> parseIniSection(std::wstring_view texts) {
  std::vector<IniLine> lines;
  while (!texts.empty()) {
    const std::wstring_view line = texts.substr(0, texts.find(L'\0'));
    texts.remove_prefix(line.size() < texts.size() ? line.size() + 1 : line.size());
    const std::size_t equals = line.find(L'=');
    // A name without a value would hide a setting's default behind an empty text.
    if (equals == std::wstring_view::npos || equals == 0 || equals + 1 == line.size()) continue;
    lines.push_back({line.substr(0, equals), line.substr(equals + 1)});
  }
  return lines;
}

}  // namespace quillpress::driver
