#pragma once

#include <string>
#include <string_view>

namespace quillpress::driver {

// Conversions between wide text and text in the system's ANSI code page. Characters that the code page
// lacks become its substitute; what cannot be converted at all becomes the empty text.
std::string toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view text);

}  // namespace quillpress::driver
