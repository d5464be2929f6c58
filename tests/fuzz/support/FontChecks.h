#pragma once

#include <vector>

#include "postscript/level3/fonts/OutlineFont.h"

namespace quillpress::fuzz {

// Whether a simple subset has the units of the font; those of CIDFonts may have another matrix for each
// glyph.
enum class Units { kSame, kOther };

// Reads the first glyphs of a font and writes them as subsets, simple and composite. What a subset says that
// it holds must be readable there, and a simple one's glyphs draw what they draw in the font, where units are
// the same.
void checkFont(const level3::OutlineFont& font, Units units);

}  // namespace quillpress::fuzz
