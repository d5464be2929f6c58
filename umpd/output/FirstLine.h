#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress {

// The first line of a text file in the ANSI code page, less than `bufferSize` characters of it, without
// blanks and tabs at its end. Nothing when the file cannot be opened.
std::optional<std::wstring> readFirstLine(const std::wstring& path, std::size_t bufferSize);

// The same of a text.
std::string_view firstLine(std::string_view text);

}  // namespace quillpress
