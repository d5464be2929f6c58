#pragma once

#include <array>
#include <string_view>

namespace quillpress::level3 {

// "A 0041;AE 00C6;...": a name, and its characters in hexadecimal digits; sorted by name as bytes. In two
// halves, as compilers need not take longer literals.
extern const std::array<std::string_view, 2> kAdobeGlyphList;

}  // namespace quillpress::level3
