#include "umpd/rules/Text.h"

#include <algorithm>

namespace quillpress::driver {
namespace {
wchar_t folded(wchar_t character) {
  // Not the C library's towlower, whose answer depends on the locale that the host process has set.
  return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}
}  // namespace

bool equalsIgnoringCase(std::wstring_view left, std::wstring_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](wchar_t a, wchar_t b) { return folded(a) == folded(b); });
}

std::wstring backslashesToCommas(std::wstring_view text) {
  std::wstring result(text);
  std::replace(result.begin(), result.end(), L'\\', L',');
  return result;
}

std::wstring_view lastComponent(std::wstring_view text, std::wstring_view separators) {
  const std::size_t separator = text.find_last_of(separators);
  return separator == std::wstring_view::npos ? text : text.substr(separator + 1);
}

std::wstring_view fitting(std::wstring_view text, std::size_t fieldSize) {
  return fieldSize == 0 ? std::wstring_view() : text.substr(0, fieldSize - 1);
}

std::wstring_view textOfField(const wchar_t* field, std::size_t fieldSize) {
  // A full field has no zero. Reading on to the next one would read what lies behind the field.
  return {field, static_cast<std::size_t>(std::find(field, field + fieldSize, L'\0') - field)};
}

std::string_view firstLine(std::string_view text) {
  // A zero ends a text as well.
  constexpr std::string_view kEnds("\n\0", 2);
  const std::string_view line = text.substr(0, text.find_first_of(kEnds));
  const std::size_t last = line.find_last_not_of("\r\n\t ");
  return line.substr(0, last + 1);  // none: npos + 1 is 0
}
}  // namespace quillpress::driver
