#pragma once

#include <string>

#include "postscript/level3/text/Face.h"

namespace quillpress::level3 {

// What a glyph means to a reader, as the font's dictionary tells it: its table GlyphNames2Unicode, else the
// glyph's name. Empty when neither does.
std::u32string textOfGlyph(Interpreter& interpreter, const Object& font, const GlyphKey& key);

// What the code of a glyph means in the usual encoding of Western text; empty for CIDs and control codes.
std::u32string textOfCode(const GlyphKey& key);

// Of UTF-16, highest byte first.
std::u32string textOfUtf16(std::string_view bytes);

}  // namespace quillpress::level3
