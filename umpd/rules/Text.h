#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillpress::driver {
// Compares texts, folding only the letters A-Z.
bool equalsIgnoringCase(std::wstring_view left, std::wstring_view right);

// The text with every backslash replaced by a comma: registry keys cannot hold the former.
std::wstring backslashesToCommas(std::wstring_view text);

// What follows the last of the given separators; the whole text when it has none.
std::wstring_view lastComponent(std::wstring_view text, std::wstring_view separators);

// The text as far as it fits into a field of so many characters, the final zero among them.
std::wstring_view fitting(std::wstring_view text, std::size_t fieldSize);

// The text of a field of fixed size: up to its first zero, or all of it.
std::wstring_view textOfField(const wchar_t* field, std::size_t fieldSize);

// The first line of a text, without blanks and tabs at its end.
std::string_view firstLine(std::string_view text);

// A pointer from outside: null reads as the empty text.
inline std::wstring_view textOrEmpty(const wchar_t* text) {
  return text == nullptr ? L"" : text;
}
}  // namespace quillpress::driver
