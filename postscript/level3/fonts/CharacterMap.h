#pragma once

#include <string_view>
#include <unordered_map>

#include "postscript/level3/fonts/OutlineFont.h"

namespace quillpress::level3 {

// The lowest character of each glyph that a TrueType cmap table maps Unicode to. Empty when it has no Unicode
// map, and as far as it can be read when it is broken.
std::unordered_map<GlyphIndex, char32_t> charactersOfGlyphs(std::string_view cmap);

// A cmap table for the codes of a simple font, as (1, 0).
std::string cmapOf(const std::vector<std::pair<std::uint8_t, std::uint16_t>>& glyphsOfCodes);

}  // namespace quillpress::level3
