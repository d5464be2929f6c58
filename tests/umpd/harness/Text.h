#pragma once

#include <string>
#include <string_view>

namespace quillpress::harness {

// From and to the ANSI code page.
std::wstring widen(std::string_view text);
std::string narrow(std::wstring_view text);

// `text` with every `from` as `to`.
std::wstring withReplaced(std::wstring text, wchar_t from, wchar_t to);

}  // namespace quillpress::harness
