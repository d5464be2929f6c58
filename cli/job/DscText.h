#pragma once

#include <string>
#include <string_view>

namespace quillpress::cli {

// The text that the value of a comment stands for, in UTF-8: plain, in parentheses with the escapes of a
// string, or in hexadecimal between angle brackets. Bytes that are no UTF-8 (nor UTF-16 with its mark) are
// taken as Windows-1252, as that is what drivers write.
std::string dscText(std::string_view value);

}  // namespace quillpress::cli
