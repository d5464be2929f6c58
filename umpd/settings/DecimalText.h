#pragma once

#include <string_view>

namespace quillpress {

// The integer that a text begins with: an optional minus sign and digits. Without digits it is 0; beyond
// 32 bits it is the nearest integer there is.
int toInteger(std::wstring_view text);

// Whether the text consists of decimal digits, at least one.
bool isDecimalNumber(std::wstring_view text);

}  // namespace quillpress
