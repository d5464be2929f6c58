#pragma once

#include <string_view>

namespace quillpress::level3 {

// "A 0041;AE 00C6;...": a name, and its characters in hexadecimal digits; sorted by name as bytes.
extern const std::string_view kAdobeGlyphList;

}  // namespace quillpress::level3
