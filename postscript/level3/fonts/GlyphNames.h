#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillpress::level3 {

// The text that a glyph's name stands for by the rules of the Adobe Glyph List: listed names, uniXXXX,
// uXXXXXX, ligatures (f_i), suffixes (a.alt). Empty when the name tells nothing, as "g12" and ".notdef".
std::u32string textOfGlyphName(std::string_view name);

// The same for the names of ZapfDingbats (a1 to a206), which are read only in a font that is one.
std::u32string textOfDingbatName(std::string_view name);

// A listed name of a character, empty when there is none.
std::string_view glyphNameOf(char32_t character);

}  // namespace quillpress::level3
