#pragma once

#include <string>
#include <string_view>

namespace quillpress::cli {

// Texts of the system are UTF-16, those of the program UTF-8. What is neither comes as U+FFFD.
std::wstring wideText(std::string_view text);
std::string utf8Text(std::wstring_view text);

// The name of a file as the system takes it, however long it is.
std::wstring widePath(const std::string& name);

}  // namespace quillpress::cli
