#pragma once

#include <string>
#include <string_view>

namespace quillpress {

inline constexpr std::string_view kAsciiHexDecode = "ASCIIHexDecode";
inline constexpr std::string_view kAscii85Decode = "ASCII85Decode";

// The bytes behind hex digits. White space is skipped, any other character ignored; an odd last digit
// counts as followed by 0.
std::string decodeHex(std::string_view text);

// The bytes behind ASCII85 text up to its "~". White space is skipped, any other character ignored.
std::string decodeAscii85(std::string_view text);

// Decodes with the filter of that name; a name of no filter here leaves the text as it is.
std::string decodeWith(std::string_view filterName, const std::string& text);

}  // namespace quillpress
