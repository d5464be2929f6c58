#pragma once

#include <string_view>
#include <vector>

namespace quillpress::driver {

// The integer that a text begins with: an optional minus sign and digits. Without digits it is 0; beyond
// 32 bits it is the nearest integer there is.
int toInteger(std::wstring_view text);

// Whether the text consists of decimal digits, at least one.
bool isDecimalNumber(std::wstring_view text);

// A line NAME=VALUE of an ini file.
struct IniLine {
  std::wstring_view name;
  std::wstring_view value;
};

// The lines of a section as the system hands them over: texts that each end with a zero. Lines without
// "=", name or value are left out. The result refers into the texts.
std::vector<IniLine> parseIniSection(std::wstring_view texts);

}  // namespace quillpress::driver
